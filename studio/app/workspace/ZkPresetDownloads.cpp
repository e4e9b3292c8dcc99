#include "ZkPresetDownloads.h"

namespace zk::app {

PresetDownloads::PresetDownloads(IZkMediaLibrary *library, QObject *parent)
    : QObject(parent)
    , m_manager(library->mediaItemManager())
{
    m_manager->addObserver(this);
}

PresetDownloads::~PresetDownloads()
{
    m_manager->removeObserver(this);
}

void PresetDownloads::start(qint64 itemId)
{
    if (state(itemId) != State::Running)
        set(itemId, {State::Running, 0});
}

void PresetDownloads::set(qint64 itemId, const Download &download)
{
    const bool wasRunning = state(itemId) == State::Running;
    const bool isRunning = download.state == State::Running;
    m_running += int(isRunning) - int(wasRunning);
    m_downloads.insert(itemId, download);
    emit changed(itemId);
    if (wasRunning != isRunning)
        emit runningChanged();
}

// The library also fetches newer versions of what is on disk; nobody waits for those.
void PresetDownloads::onDownloadProgressEvent(Media *media, Type type, int percent)
{
    const IZkAbstractMediaItem *const item = media ? media->mediaItem() : nullptr;
    if (item && type == ZKVBLMODEL::DownloadPreset && state(item->id()) == State::Running)
        set(item->id(), {State::Running, percent});
}

void PresetDownloads::onDownloadFinishedEvent(Media *media, Type type, int error)
{
    const IZkAbstractMediaItem *const item = media ? media->mediaItem() : nullptr;
    if (item && type == ZKVBLMODEL::DownloadPreset && m_downloads.contains(item->id()))
        set(item->id(), {error == 0 ? State::Idle : State::Failed, 0});
}

void PresetDownloads::onFetchMoreStateChangedEvent(Folder *, int)
{
    emit folderStateChanged();
}

} // namespace zk::app
