#pragma once

#include "datamodel/ZkMediaLibrary.h"

#include <QHash>
#include <QObject>

namespace zk::app {

// How far the downloads of presets are. The list of presets tells only that something has moved.
//
// The library is not owned and must outlive it. GUI thread only.
class PresetDownloads : public QObject, private IZkMediaItemManagerEventObserver
{
    Q_OBJECT

public:
    enum class State {
        Idle, // on disk, or not asked for
        Running,
        Failed,
    };

    explicit PresetDownloads(IZkMediaLibrary *library, QObject *parent = nullptr);
    ~PresetDownloads() override;

    State state(qint64 itemId) const { return m_downloads.value(itemId).state; }
    int percent(qint64 itemId) const { return m_downloads.value(itemId).percent; }
    bool isAnyRunning() const { return m_running > 0; }
    // Somebody has asked for it.
    void start(qint64 itemId);
    // It was refused, so that the library has nothing to tell about it.
    void fail(qint64 itemId) { set(itemId, {State::Failed, 0}); }

Q_SIGNALS:
    void changed(qint64 itemId);
    void runningChanged();
    void folderStateChanged();

private:
    struct Download
    {
        State state = State::Idle;
        int percent = 0;
    };
    using Folder = IZkFolderMedia;
    using Media = IZkAbstractMedia;
    using Type = ZKVBLMODEL::ZkMediaDownloadType;

    void set(qint64 itemId, const Download &download);

    void onDownloadFinishedEvent(Media *media, Type type, int error) override;
    void onDownloadProgressEvent(Media *media, Type type, int percent) override;
    void onFetchMoreStateChangedEvent(Folder *folder, int state) override;
    void onBeforeAddItemEvent(Folder *, Media *) override { }
    void onAfterAddItemEvent(Folder *, Media *) override { }
    void onBeforeRemoveItemEvent(Folder *, Media *) override { }
    void onAfterRemoveItemEvent(Folder *, Media *) override { }
    void onBeforeClearItemsEvent(Folder *) override { }
    void onAfterClearItemsEvent(Folder *) override { }
    void onBeforeMoveItemEvent(Folder *, Folder *, Media *) override { }
    void onAfterMoveItemEvent(Folder *, Folder *, Media *) override { }
    void onAllMediaChangedFinishEvent(Folder *) override { }
    void onItemDataChangedEvent(Media *) override { }
    void onMediaInfoChangedEvent(Media *) override { }
    void onMediaStateChangedEvent(Media *) override { }
    void onRemoveItemResultEvent(Media *, bool) override { }
    void onRenameFolderEvent(Folder *) override { }
    void onRenameItemEvent(Media *) override { }

    IZkMediaItemManager *const m_manager;
    QHash<qint64, Download> m_downloads; // that were asked for
    int m_running = 0;
};

} // namespace zk::app
