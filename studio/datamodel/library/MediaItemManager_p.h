// Loads folders and fetches the files of items. Not public.
#pragma once

#include "DownloadQueue_p.h"
#include "LibraryCore_p.h"

namespace zk::datamodel {

class MediaItemManager : public QObject, public IZkMediaItemManager
{
    Q_OBJECT

public:
    MediaItemManager(LibraryCore &core, const DownloadSettings &settings);

    bool isBusy(qint64 item) const;
    bool cancel(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type);
    // Fetches what has a newer version than the one on disk.
    void fetchUpdates();
    // Tells that what the server has more could not be asked for.
    void reportFetchMoreError();

    bool loadFolder(IZkFolderMedia *folder) override;
    int downloadItem(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type) override;
    void addObserver(IZkMediaItemManagerEventObserver *observer) override;
    void removeObserver(IZkMediaItemManagerEventObserver *observer) override;

private:
    struct Pending
    {
        ResourceKey key;
        QString file; // where it is going to be, relative
    };

    bool isIntact(const LibraryItem &item, storage::ResourceKind kind) const;
    void startLocal(const ResourceKey &key);
    void finishLocal(const ResourceKey &key);
    void startDownload(const ResourceKey &key, const storage::PresetItem &record);
    void reportProgress(const ResourceKey &key, int percent);
    void endDownload(const ResourceKey &key, DownloadError error);
    bool record(const Pending &pending);
    void end(const ResourceKey &key, DownloadError error);
    void endLoading(qint64 folder);

    LibraryCore &m_core;
    DownloadQueue m_queue;
    QVector<Pending> m_downloads; // those of the queue
    QVector<ResourceKey> m_local; // what needs no network
};

} // namespace zk::datamodel
