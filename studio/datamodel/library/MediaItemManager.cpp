#include "MediaItemManager_p.h"

#include "ZkDurableFile.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>

namespace zk::datamodel {

using storage::PresetItem;
using storage::PresetStore;
using storage::Resource;
using storage::ResourceKind;

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.library")

using Observer = IZkMediaItemManagerEventObserver;
using Type = ZKVBLMODEL::ZkMediaDownloadType;

bool hasFile(Type type)
{
    return type == ZKVBLMODEL::DownloadThumbnail || type == ZKVBLMODEL::DownloadPreset;
}

ResourceKind kindOf(Type type)
{
    return type == ZKVBLMODEL::DownloadPreset ? ResourceKind::Package : ResourceKind::Thumbnail;
}

Type typeOf(ResourceKind kind)
{
    return kind == ResourceKind::Package ? ZKVBLMODEL::DownloadPreset
                                         : ZKVBLMODEL::DownloadThumbnail;
}

} // namespace

MediaItemManager::MediaItemManager(LibraryCore &core, const DownloadSettings &settings)
    : m_core(core)
    , m_queue(settings)
{
    connect(&m_queue, &DownloadQueue::progressed, this, &MediaItemManager::reportProgress);
    connect(&m_queue, &DownloadQueue::finished, this, &MediaItemManager::endDownload);
}

void MediaItemManager::addObserver(IZkMediaItemManagerEventObserver *observer)
{
    m_core.itemObservers.add(observer);
}

void MediaItemManager::removeObserver(IZkMediaItemManagerEventObserver *observer)
{
    m_core.itemObservers.remove(observer);
}

bool MediaItemManager::loadFolder(IZkFolderMedia *folder)
{
    LibraryFolder *const known = m_core.tree().find(folder);
    if (!known)
        return false;
    if (known->loadState() == ZKVBLMODEL::zkmsLoading)
        return true;
    known->setLoadState(ZKVBLMODEL::zkmsLoading);
    // By its id: a reload may replace the folder before the turn comes.
    const qint64 id = known->id();
    QMetaObject::invokeMethod(
        this, [this, id] { endLoading(id); }, Qt::QueuedConnection);
    return true;
}

void MediaItemManager::endLoading(qint64 id)
{
    LibraryFolder *const folder = m_core.tree().folder(id);
    if (!folder)
        return;
    folder->setLoadState(ZKVBLMODEL::zkmsLoaded);
    m_core.itemObservers.notify(&Observer::onAllMediaChangedFinishEvent, folder);
}

void MediaItemManager::reportFetchMoreError()
{
    const NoticeScope::Enter enter(m_core.notices);
    const QVector<LibraryFolder *> folders = m_core.tree().folders();
    for (LibraryFolder *folder : folders) {
        if (folder->loadState() != ZKVBLMODEL::zkmsLoaded)
            continue;
        folder->setLoadState(ZKVBLMODEL::zkmsFetchMoreError);
        m_core.itemObservers.notify(
            &Observer::onFetchMoreStateChangedEvent, folder, int(ZKVBLMODEL::zkmsFetchMoreError));
    }
}

bool MediaItemManager::isBusy(qint64 item) const
{
    return m_queue.containsItem(item)
        || std::any_of(m_local.begin(), m_local.end(), [item](const ResourceKey &key) {
               return key.item == item;
           });
}

int MediaItemManager::downloadItem(IZkAbstractMediaItem *item, Type type)
{
    const LibraryItem *const known = m_core.find(item);
    if (!known || !hasFile(type) || !m_core.tree().media(known->id()))
        return ZKVBLMODEL::DownloadRefused;
    const ResourceKey key {known->id(), kindOf(type)};
    if (m_queue.contains(key) || m_local.contains(key))
        return ZKVBLMODEL::DownloadRunning;
    const PresetItem &record = known->record();
    if (isIntact(*known, key.kind) || m_core.builtin.canMake(record))
        startLocal(key);
    else if (!record.resource(key.kind).url.isEmpty())
        startDownload(key, record);
    else
        return ZKVBLMODEL::DownloadRefused;
    return ZKVBLMODEL::DownloadStarted;
}

bool MediaItemManager::isIntact(const LibraryItem &item, ResourceKind kind) const
{
    const Resource &resource = item.record().resource(kind);
    return resource.isOnDisk() && !resource.hasUpdate()
        && storage::sha256OfFile(m_core.store.absolutePath(resource.file)) == resource.sha256;
}

void MediaItemManager::startLocal(const ResourceKey &key)
{
    m_local.append(key);
    QMetaObject::invokeMethod(
        this, [this, key] { finishLocal(key); }, Qt::QueuedConnection);
}

void MediaItemManager::finishLocal(const ResourceKey &key)
{
    const LibraryItem &item = *m_core.item(key.item);
    QString error;
    const bool isThere =
        isIntact(item, key.kind) || m_core.builtin.make(item.record(), key.kind, &error);
    if (!isThere)
        qCWarning(log).noquote() << item.slug() << "cannot be made:" << error;
    m_local.removeOne(key);
    end(key, isThere ? DownloadError::None : DownloadError::Disk);
}

void MediaItemManager::startDownload(const ResourceKey &key, const PresetItem &record)
{
    const Resource &resource = record.resource(key.kind);
    const QString file = PresetStore::fileFor(record, key.kind);
    DownloadRequest request;
    request.url = resource.url;
    request.partPath = m_core.store.incomingPath(file);
    request.targetPath = m_core.store.absolutePath(file);
    request.sha256 = resource.sha256;
    request.size = resource.size;
    m_downloads.append({key, file});
    m_queue.add(key, request);
}

void MediaItemManager::reportProgress(const ResourceKey &key, int percent)
{
    LibraryMedia *const media = m_core.tree().media(key.item);
    if (media)
        m_core.itemObservers.notify(
            &Observer::onDownloadProgressEvent, media, typeOf(key.kind), percent);
}

void MediaItemManager::endDownload(const ResourceKey &key, DownloadError error)
{
    const auto found = std::find_if(
        m_downloads.begin(), m_downloads.end(), [&key](const auto &p) { return p.key == key; });
    const Pending pending = *found;
    m_downloads.erase(found);
    if (error == DownloadError::None && !record(pending))
        error = DownloadError::Disk;
    end(key, error);
}

// The file is complete in its place; from now on a row says so.
bool MediaItemManager::record(const Pending &pending)
{
    if (m_core.store.setFile(pending.key.item, pending.key.kind, pending.file))
        return true;
    qCWarning(log).noquote() << pending.file << "cannot be recorded:" << m_core.store.errorText();
    return false;
}

void MediaItemManager::end(const ResourceKey &key, DownloadError error)
{
    const NoticeScope::Enter enter(m_core.notices);
    // Whoever waits for an item that has left the tree meanwhile is owed the finish all the same.
    LibraryMedia departed(*m_core.item(key.item));
    LibraryMedia *const shown = m_core.updateItem(key.item);
    LibraryMedia *const media = shown ? shown : &departed;
    if (shown && error == DownloadError::None)
        m_core.itemObservers.notify(&Observer::onMediaStateChangedEvent, media);
    m_core.itemObservers.notify(
        &Observer::onDownloadFinishedEvent, media, typeOf(key.kind), int(error));
}

bool MediaItemManager::cancel(IZkAbstractMediaItem *item, Type type)
{
    const LibraryItem *const known = m_core.find(item);
    return known && hasFile(type) && m_queue.cancel({known->id(), kindOf(type)});
}

void MediaItemManager::fetchUpdates()
{
    const QVector<LibraryItem *> items = m_core.items();
    for (LibraryItem *item : items) {
        for (ResourceKind kind : {ResourceKind::Thumbnail, ResourceKind::Package}) {
            if (item->record().resource(kind).hasUpdate())
                downloadItem(item, typeOf(kind));
        }
    }
}

} // namespace zk::datamodel
