// List model of the cutout presets.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "datamodel/ZkMediaLibrary.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QVector>

#include <memory>

// One row per preset of a folder of the media library, optionally headed by "None". Follows additions
// to and removals from that folder itself, not those of its sub-folders, for as long as it is
// subscribed. Owns nothing but the "None" entry: folder and media belong to the library. GUI thread.
class ZKSMARTKEYING_EXPORT ZCutoutPresetItemModel : public QAbstractItemModel,
                                                    public IZkMediaItemManagerEventObserver,
                                                    public IZkCategoryTreeEventObserver
{
    Q_OBJECT

public:
    // Besides Qt::DisplayRole and Qt::ToolTipRole, which are the name too.
    enum Role {
        NameRole = 258, // QString
        ThumbnailPathRole = 259, // QString, empty without a media item
        MediaRole = 260, // IZkAbstractMedia *
        MediaIdRole = 261, // qint64, 0 without a media item
        SlugRole = 262, // QString, empty without a media item
    };

    explicit ZCutoutPresetItemModel(QObject *parent);
    ~ZCutoutPresetItemModel() override;

    // Replaces the rows by everything in the folder, sub-folders included; "None" stays on top when it
    // was there. Null is ignored.
    void load(const IZkFolderMedia *folder);
    // The folder to follow; loads nothing. Without a folder no rows remain but "None".
    void setFolder(IZkFolderMedia *folder);
    IZkFolderMedia *folder() const { return m_folder; }
    // Does nothing when it is there.
    void addVirtualNoneItem();

    QVector<QModelIndex> getAllIndexes() const;
    // Null for an index without one.
    static IZkAbstractMedia *mediaFromIndex(const QModelIndex &index);
    static IZkAbstractMediaItem *mediaItemFromIndex(const QModelIndex &index);

    // Must be unsubscribed, or dead, before the manager dies.
    void subscribeMediaItemManager(IZkMediaItemManager *manager);
    void unSubscribeMediaItemManager();

    QModelIndex
    index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    // The same for every parent; hasChildren() tells that rows have none.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // Read only.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    void onBeforeAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onAfterAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onBeforeRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onAfterRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onBeforeClearItemsEvent(IZkFolderMedia *folder) override;
    void onAfterClearItemsEvent(IZkFolderMedia *folder) override;
    void onBeforeMoveItemEvent(IZkFolderMedia *from,
                               IZkFolderMedia *to,
                               IZkAbstractMedia *media) override;
    void onAfterMoveItemEvent(IZkFolderMedia *from,
                              IZkFolderMedia *to,
                              IZkAbstractMedia *media) override;
    void onAllMediaChangedFinishEvent(IZkFolderMedia *folder) override;
    void onDownloadFinishedEvent(IZkAbstractMedia *media,
                                 ZKVBLMODEL::ZkMediaDownloadType type,
                                 int error) override;
    void onDownloadProgressEvent(IZkAbstractMedia *media,
                                 ZKVBLMODEL::ZkMediaDownloadType type,
                                 int percent) override;
    void onFetchMoreStateChangedEvent(IZkFolderMedia *folder, int state) override;
    void onItemDataChangedEvent(IZkAbstractMedia *media) override;
    void onMediaInfoChangedEvent(IZkAbstractMedia *media) override;
    void onMediaStateChangedEvent(IZkAbstractMedia *media) override;
    void onRemoveItemResultEvent(IZkAbstractMedia *media, bool removed) override;
    void onRenameFolderEvent(IZkFolderMedia *folder) override;
    void onRenameItemEvent(IZkAbstractMedia *media) override;
    void beforeCategoryTreeReload() override;
    void afterCategoryTreeReload() override;

Q_SIGNALS:
    void sigAllItemsFinishLoad(IZkFolderMedia *folder); // any folder of the library
    // Reserved for models that list what is on disk; this one raises neither.
    void sigDownloadedItemRemoved(IZkAbstractMedia *media);
    void sigFetchMoreSuccess(IZkFolderMedia *folder);
    // Any preset of the library; not for thumbnails.
    void sigItemDownloadFinished(IZkAbstractMedia *media, bool failed);
    void sigItemDownloadProgressChanged(IZkAbstractMedia *media);

private:
    class NoneMedia;

    void setExtraNoneName();
    bool hasNoneRow() const;
    void replaceRows(const QVector<IZkAbstractMedia *> &medias);
    int rowOf(const IZkAbstractMedia *media); // -1: none
    void itemDataChanged(IZkAbstractMedia *media);
    QString thumbnailPath(const IZkAbstractMedia *media) const;

    IZkFolderMedia *m_folder = nullptr;
    QVector<IZkAbstractMedia *> m_rows;
    // Rows by media, filled on demand: change notices come by the thousand.
    QHash<const IZkAbstractMedia *, int> m_rowOf;
    std::unique_ptr<NoneMedia> m_noneItem;
    IZkMediaItemManager *m_mediaItemManager = nullptr;
};
