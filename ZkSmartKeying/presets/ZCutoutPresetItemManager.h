// Lists and downloads cutout presets.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "datamodel/ZkMediaLibrary.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <functional>

class QModelIndex;
class ZCutoutPresetItemModel;

// Finds the folder of cutout presets in one category of the media library, loads it into its model,
// sees to it that every preset has a readable thumbnail on disk and downloads presets that are picked.
// Posts the custom event "NotifySmartCutoutModelLoadFinished" when the folder has been loaded. The
// media library must outlive it. GUI thread only.
class ZKSMARTKEYING_EXPORT ZCutoutPresetItemManager : public QObject,
                                                      public IZkCategoryTreeEventObserver
{
    Q_OBJECT

public:
    // Success, and the item that has been downloaded.
    using DownloadCallback = std::function<void(bool, IZkAbstractMediaItem *)>;

    explicit ZCutoutPresetItemManager(QObject *parent);
    ~ZCutoutPresetItemManager() override;

    // Deletes the manager when control returns to the event loop.
    void release();

    // A ZKVBLMODEL::ZkLibraryCategory; to be set before loading.
    void setCategory(int category);
    ZCutoutPresetItemModel *itemModel() const { return m_model; } // owned by the manager
    // Without such a folder the model offers nothing but "None".
    void loadCutoutPresetFolder();

    // Downloads the preset unless it is on disk already; then, and without an item, the callback is
    // dropped. Otherwise it is called when the first pending download is over, or at once when this
    // one is refused, unless a second pick replaces it before that. Failures show a toast.
    void downloadItem(const QModelIndex &index, DownloadCallback callback);
    // Null when there is none in the model.
    IZkAbstractMediaItem *findMediaItemBySlug(const QString &slug) const;

    void beforeCategoryTreeReload() override;
    void afterCategoryTreeReload() override;

private Q_SLOTS:
    void slotItemDownloadFinished(IZkAbstractMedia *media, bool failed);
    void slotItemLoadFinished(IZkFolderMedia *folder);

private:
    void initConnect();
    IZkMediaLibrary *mediaLibrary() const;
    IZkMediaItemManager *mediaItemManager() const;
    IZkFolderMediaManager *mediaFolderManager() const;
    IZkFolderMedia *findCutoutPresetFolder() const;
    void loadFolder(IZkFolderMedia *folder);
    void loadCutoutPresetModel(IZkFolderMedia *folder);
    void checkCutoutPresetThumbnail(qint64 id);
    void checkItemThumbnail(IZkAbstractMedia *media);
    int downloadItem(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type);
    void finishDownload(IZkAbstractMediaItem *item, bool failed);
    void abandonRemovedDownloads();
    void showDownloadFailToast();

    int m_category = 0;
    ZCutoutPresetItemModel *m_model;
    DownloadCallback m_downloadCallback; // of the latest pick
    QVector<IZkAbstractMediaItem *> m_pendingItems; // the first one is being downloaded
};
