#include "ZCutoutPresetItemModel.h"

// Stands for choosing no preset: a media with a name and nothing behind it.
class ZCutoutPresetItemModel::NoneMedia final : public IZkAbstractMedia
{
public:
    int kind() const override { return ZKVBLMODEL::PresetMedia; }
    QString name() const override { return m_name; }
    IZkAbstractMediaItem *mediaItem() const override { return nullptr; }
    void setName(const QString &name) { m_name = name; }

private:
    QString m_name;
};

ZCutoutPresetItemModel::ZCutoutPresetItemModel(QObject *parent)
    : QAbstractItemModel(parent)
{
    // Views may queue this model's signals.
    qRegisterMetaType<IZkAbstractMedia *>("IZkAbstractMedia*");
    qRegisterMetaType<IZkFolderMedia *>("IZkFolderMedia*");
}

ZCutoutPresetItemModel::~ZCutoutPresetItemModel()
{
    unSubscribeMediaItemManager();
}

void ZCutoutPresetItemModel::load(const IZkFolderMedia *folder)
{
    if (folder)
        replaceRows(folder->medias(true));
}

void ZCutoutPresetItemModel::setFolder(IZkFolderMedia *folder)
{
    m_folder = folder;
    if (!folder)
        replaceRows({});
}

void ZCutoutPresetItemModel::replaceRows(const QVector<IZkAbstractMedia *> &medias)
{
    beginResetModel();
    const bool keepNone = hasNoneRow();
    m_rows = medias;
    if (keepNone)
        m_rows.prepend(m_noneItem.get());
    m_rowOf.clear();
    endResetModel();
}

bool ZCutoutPresetItemModel::hasNoneRow() const
{
    return !m_rows.isEmpty() && m_rows.constFirst() == m_noneItem.get();
}

void ZCutoutPresetItemModel::addVirtualNoneItem()
{
    if (hasNoneRow())
        return;
    if (!m_noneItem)
        m_noneItem = std::make_unique<NoneMedia>();
    setExtraNoneName();
    beginInsertRows(QModelIndex(), 0, 0);
    m_rows.prepend(m_noneItem.get());
    m_rowOf.clear();
    endInsertRows();
}

void ZCutoutPresetItemModel::setExtraNoneName()
{
    if (m_noneItem)
        m_noneItem->setName(tr("None"));
}

QVector<QModelIndex> ZCutoutPresetItemModel::getAllIndexes() const
{
    QVector<QModelIndex> indexes;
    indexes.reserve(m_rows.size());
    for (int row = 0; row < m_rows.size(); ++row)
        indexes.append(index(row, 0));
    return indexes;
}

IZkAbstractMedia *ZCutoutPresetItemModel::mediaFromIndex(const QModelIndex &index)
{
    return index.data(MediaRole).value<IZkAbstractMedia *>();
}

IZkAbstractMediaItem *ZCutoutPresetItemModel::mediaItemFromIndex(const QModelIndex &index)
{
    const IZkAbstractMedia *const media = mediaFromIndex(index);
    return media ? media->mediaItem() : nullptr;
}

void ZCutoutPresetItemModel::subscribeMediaItemManager(IZkMediaItemManager *manager)
{
    unSubscribeMediaItemManager();
    m_mediaItemManager = manager;
    if (manager)
        manager->addObserver(this);
}

void ZCutoutPresetItemModel::unSubscribeMediaItemManager()
{
    if (m_mediaItemManager)
        m_mediaItemManager->removeObserver(this);
    m_mediaItemManager = nullptr;
}

QModelIndex ZCutoutPresetItemModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || row < 0 || row >= m_rows.size() || column != 0)
        return QModelIndex();
    return createIndex(row, column);
}

QModelIndex ZCutoutPresetItemModel::parent(const QModelIndex &) const
{
    return QModelIndex();
}

int ZCutoutPresetItemModel::rowCount(const QModelIndex &) const
{
    return m_rows.size();
}

int ZCutoutPresetItemModel::columnCount(const QModelIndex &) const
{
    return 1;
}

bool ZCutoutPresetItemModel::hasChildren(const QModelIndex &parent) const
{
    return !parent.isValid() && !m_rows.isEmpty();
}

QVariant ZCutoutPresetItemModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return QVariant();
    IZkAbstractMedia *const media = m_rows.at(index.row());
    const IZkAbstractMediaItem *const item = media->mediaItem();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case NameRole:
        return media->name();
    case ThumbnailPathRole:
        return thumbnailPath(media);
    case MediaRole:
        return QVariant::fromValue(media);
    case MediaIdRole:
        return item ? item->id() : qint64(0);
    case SlugRole:
        return item ? item->slug() : QString();
    default:
        return QVariant();
    }
}

QString ZCutoutPresetItemModel::thumbnailPath(const IZkAbstractMedia *media) const
{
    if (media == m_noneItem.get())
        return QStringLiteral(":/Resource/DefaultMask/icon54_mask-none.png");
    const IZkAbstractMediaItem *const item = media->mediaItem();
    return item ? item->thumbnailPath() : QString();
}

bool ZCutoutPresetItemModel::setData(const QModelIndex &, const QVariant &, int)
{
    return false;
}

int ZCutoutPresetItemModel::rowOf(const IZkAbstractMedia *media)
{
    if (m_rowOf.isEmpty()) {
        m_rowOf.reserve(m_rows.size());
        for (int row = m_rows.size() - 1; row >= 0; --row)
            m_rowOf.insert(m_rows.at(row), row);
    }
    return m_rowOf.value(media, -1);
}

void ZCutoutPresetItemModel::itemDataChanged(IZkAbstractMedia *media)
{
    const int row = rowOf(media);
    if (row >= 0)
        emit dataChanged(index(row, 0), index(row, 0));
}

void ZCutoutPresetItemModel::onAfterAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media)
{
    if (folder != m_folder || !media)
        return;
    beginInsertRows(QModelIndex(), m_rows.size(), m_rows.size());
    m_rows.append(media);
    m_rowOf.clear();
    endInsertRows();
}

void ZCutoutPresetItemModel::onAfterRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media)
{
    if (folder != m_folder || !media)
        return;
    const int row = m_rows.indexOf(media);
    if (row < 0)
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_rows.removeAt(row);
    m_rowOf.clear();
    endRemoveRows();
}

void ZCutoutPresetItemModel::onAllMediaChangedFinishEvent(IZkFolderMedia *folder)
{
    emit sigAllItemsFinishLoad(folder);
}

void ZCutoutPresetItemModel::onDownloadFinishedEvent(IZkAbstractMedia *media,
                                                     ZKVBLMODEL::ZkMediaDownloadType type,
                                                     int error)
{
    const bool isShown =
        type == ZKVBLMODEL::DownloadThumbnail || type == ZKVBLMODEL::DownloadPreset;
    if (!media || media->kind() != ZKVBLMODEL::PresetMedia || !isShown)
        return;
    itemDataChanged(media);
    if (type == ZKVBLMODEL::DownloadPreset)
        emit sigItemDownloadFinished(media, error != 0);
}

void ZCutoutPresetItemModel::onDownloadProgressEvent(IZkAbstractMedia *media,
                                                     ZKVBLMODEL::ZkMediaDownloadType,
                                                     int)
{
    emit sigItemDownloadProgressChanged(media);
}

void ZCutoutPresetItemModel::onItemDataChangedEvent(IZkAbstractMedia *media)
{
    itemDataChanged(media);
}

// What follows changes no row of a list that is loaded as a whole.

void ZCutoutPresetItemModel::onBeforeAddItemEvent(IZkFolderMedia *, IZkAbstractMedia *) { }
void ZCutoutPresetItemModel::onBeforeRemoveItemEvent(IZkFolderMedia *, IZkAbstractMedia *) { }
void ZCutoutPresetItemModel::onBeforeClearItemsEvent(IZkFolderMedia *) { }
void ZCutoutPresetItemModel::onAfterClearItemsEvent(IZkFolderMedia *) { }
void ZCutoutPresetItemModel::onBeforeMoveItemEvent(IZkFolderMedia *,
                                                   IZkFolderMedia *,
                                                   IZkAbstractMedia *)
{ }
void ZCutoutPresetItemModel::onAfterMoveItemEvent(IZkFolderMedia *,
                                                  IZkFolderMedia *,
                                                  IZkAbstractMedia *)
{ }
void ZCutoutPresetItemModel::onFetchMoreStateChangedEvent(IZkFolderMedia *, int) { }
void ZCutoutPresetItemModel::onMediaInfoChangedEvent(IZkAbstractMedia *) { }
void ZCutoutPresetItemModel::onMediaStateChangedEvent(IZkAbstractMedia *) { }
void ZCutoutPresetItemModel::onRemoveItemResultEvent(IZkAbstractMedia *, bool) { }
void ZCutoutPresetItemModel::onRenameFolderEvent(IZkFolderMedia *) { }
void ZCutoutPresetItemModel::onRenameItemEvent(IZkAbstractMedia *) { }
void ZCutoutPresetItemModel::beforeCategoryTreeReload() { }
void ZCutoutPresetItemModel::afterCategoryTreeReload() { }
