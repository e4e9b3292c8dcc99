#include "ZCutoutPresetItemManager.h"

#include "../ZkSmartKeyingLog.h"
#include "ZCutoutPresetItemModel.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QFile>
#include <QImageReader>
#include <QPixmap>

#include <algorithm>
#include <utility>

namespace {

const qint64 EveryItem = -1000;
const int ToastTopMargin = 104; // px

bool isReadableImage(const QString &path)
{
    // A format that nobody knows makes the reader look at the content instead of the file's name.
    QImageReader reader(path, "unknow");
    return !reader.read().isNull();
}

void logLoadState(int state)
{
    const auto log = [](const QString &text) {
        ZK_LOG(ZKLOG::Warning, "ZCutoutPresetItemManager", "loadFolder", text);
    };
    switch (state) {
    case ZKVBLMODEL::zkmsUnknow:
        log(QStringLiteral("load cutout preset:zkmsUnknow"));
        break;
    case ZKVBLMODEL::zkmsFetchMoreError:
        log(QStringLiteral("load cutout preset:zkmsFetchMoreError"));
        break;
    case ZKVBLMODEL::zkmsNeedLogin:
        log(QStringLiteral("load cutout preset:zkmsNeedLogin"));
        break;
    default:
        break;
    }
}

} // namespace

ZCutoutPresetItemManager::ZCutoutPresetItemManager(QObject *parent)
    : QObject(parent)
    , m_model(new ZCutoutPresetItemModel(this))
{
    initConnect();
}

ZCutoutPresetItemManager::~ZCutoutPresetItemManager()
{
    if (IZkMediaLibrary *const library = mediaLibrary())
        library->removeCategoryTreeObserver(this);
}

void ZCutoutPresetItemManager::release()
{
    deleteLater();
}

void ZCutoutPresetItemManager::initConnect()
{
    connect(m_model,
            &ZCutoutPresetItemModel::sigItemDownloadFinished,
            this,
            &ZCutoutPresetItemManager::slotItemDownloadFinished);
    connect(m_model,
            &ZCutoutPresetItemModel::sigAllItemsFinishLoad,
            this,
            &ZCutoutPresetItemManager::slotItemLoadFinished);
    if (IZkMediaLibrary *const library = mediaLibrary())
        library->addCategoryTreeObserver(this);
    m_model->subscribeMediaItemManager(mediaItemManager());
}

void ZCutoutPresetItemManager::setCategory(int category)
{
    m_category = category;
}

IZkMediaLibrary *ZCutoutPresetItemManager::mediaLibrary() const
{
    const IZkProjectManager *const project = IZkProjectManager::getInstance();
    return project ? project->mediaLibrary() : nullptr;
}

IZkMediaItemManager *ZCutoutPresetItemManager::mediaItemManager() const
{
    const IZkMediaLibrary *const library = mediaLibrary();
    return library ? library->mediaItemManager() : nullptr;
}

IZkFolderMediaManager *ZCutoutPresetItemManager::mediaFolderManager() const
{
    const IZkMediaLibrary *const library = mediaLibrary();
    return library ? library->folderMediaManager() : nullptr;
}

IZkFolderMedia *ZCutoutPresetItemManager::findCutoutPresetFolder() const
{
    const IZkMediaLibrary *const library = mediaLibrary();
    const IZkMediaLibraryModule *const module = library ? library->module(m_category) : nullptr;
    IZkFolderMedia *const root = module ? module->rootFolder() : nullptr;
    const IZkFolderMediaManager *const manager = mediaFolderManager();
    if (!root || !manager)
        return nullptr;
    const QVector<IZkFolderMedia *> folders = manager->folders(root, true);
    for (IZkFolderMedia *folder : folders) {
        if (folder->name().contains(QLatin1String("subject_smart_cutout_preset")))
            return folder;
    }
    return nullptr;
}

void ZCutoutPresetItemManager::loadCutoutPresetFolder()
{
    IZkFolderMedia *const folder = findCutoutPresetFolder();
    m_model->setFolder(folder);
    if (!folder) {
        m_model->addVirtualNoneItem();
        return;
    }
    loadFolder(folder);
    m_model->load(folder);
}

void ZCutoutPresetItemManager::loadFolder(IZkFolderMedia *folder)
{
    if (IZkMediaItemManager *const manager = mediaItemManager()) {
        manager->loadFolder(folder);
        if (folder->needsLoadAgain())
            manager->loadFolder(folder);
    }
    logLoadState(folder->loadState());
}

void ZCutoutPresetItemManager::slotItemLoadFinished(IZkFolderMedia *folder)
{
    // The model hears about every folder of the library.
    if (folder && folder == m_model->folder())
        loadCutoutPresetModel(folder);
}

void ZCutoutPresetItemManager::loadCutoutPresetModel(IZkFolderMedia *folder)
{
    m_model->load(folder);
    checkCutoutPresetThumbnail(EveryItem);
    ZkCustomEventManager::instance()->postEvent(
        QStringLiteral("NotifySmartCutoutModelLoadFinished"));
}

void ZCutoutPresetItemManager::checkCutoutPresetThumbnail(qint64 id)
{
    const IZkFolderMedia *const folder = m_model->folder();
    if (!folder)
        return;
    const QVector<IZkAbstractMedia *> medias = folder->medias(true);
    for (IZkAbstractMedia *media : medias) {
        const IZkAbstractMediaItem *const item = media->mediaItem();
        if (item && (id == EveryItem || item->id() == id))
            checkItemThumbnail(media);
    }
}

void ZCutoutPresetItemManager::checkItemThumbnail(IZkAbstractMedia *media)
{
    IZkAbstractMediaItem *const item = media->mediaItem();
    if (!item)
        return;
    const QString path = item->thumbnailPath();
    if (QFile::exists(path)) {
        if (isReadableImage(path))
            return;
        QFile::remove(path);
    }
    downloadItem(item, ZKVBLMODEL::DownloadThumbnail);
}

void ZCutoutPresetItemManager::downloadItem(const QModelIndex &index, DownloadCallback callback)
{
    IZkAbstractMediaItem *const item = ZCutoutPresetItemModel::mediaItemFromIndex(index);
    if (!item)
        return;
    if (!item->needsDownload()) {
        if (!m_pendingItems.isEmpty())
            m_pendingItems.removeFirst();
        return;
    }
    m_downloadCallback = std::move(callback);
    // One download ends with one notice, however often it was asked for.
    if (!m_pendingItems.contains(item))
        m_pendingItems.append(item);
    if (downloadItem(item, ZKVBLMODEL::DownloadPreset) != ZKVBLMODEL::DownloadRefused)
        return;
    // No notice will come, and the entry would block those behind it.
    m_pendingItems.removeOne(item);
    finishDownload(item, true);
}

int ZCutoutPresetItemManager::downloadItem(IZkAbstractMediaItem *item,
                                           ZKVBLMODEL::ZkMediaDownloadType type)
{
    IZkMediaItemManager *const manager = mediaItemManager();
    const int result =
        manager ? manager->downloadItem(item, type) : int(ZKVBLMODEL::DownloadRefused);
    ZK_LOG(ZKLOG::Info,
           "ZCutoutPresetItemManager",
           "downloadItem",
           QString::asprintf("cutout:download result:%d, name:%s, type:%d",
                             result,
                             item->name().toUtf8().constData(),
                             int(type)));
    return result;
}

void ZCutoutPresetItemManager::slotItemDownloadFinished(IZkAbstractMedia *media, bool failed)
{
    IZkAbstractMediaItem *const item = media->mediaItem();
    if (m_pendingItems.isEmpty() || item != m_pendingItems.constFirst())
        return;
    m_pendingItems.removeFirst();
    finishDownload(item, failed);
}

void ZCutoutPresetItemManager::finishDownload(IZkAbstractMediaItem *item, bool failed)
{
    if (failed) {
        showDownloadFailToast();
        ZK_LOG_TO(zkResourceLog(),
                  ZKLOG::Warning,
                  "ZCutoutPresetItemManager",
                  "slotItemDownloadFinished",
                  QStringLiteral("download Fail!"));
    }
    // The callback may pick the next preset, whose callback must not be cleared with this one.
    const DownloadCallback callback = std::exchange(m_downloadCallback, nullptr);
    if (callback)
        callback(!failed, item);
}

// An item that is no longer offered brings no notice; its entry would block those behind it.
void ZCutoutPresetItemManager::abandonRemovedDownloads()
{
    QVector<IZkAbstractMediaItem *> offered;
    const QVector<QModelIndex> indexes = m_model->getAllIndexes();
    for (const QModelIndex &index : indexes)
        offered.append(ZCutoutPresetItemModel::mediaItemFromIndex(index));
    IZkAbstractMediaItem *const last = m_pendingItems.value(m_pendingItems.size() - 1);
    const auto isGone = [&offered](IZkAbstractMediaItem *item) { return !offered.contains(item); };
    m_pendingItems.erase(std::remove_if(m_pendingItems.begin(), m_pendingItems.end(), isGone),
                         m_pendingItems.end());
    // The callback is that of the latest pick.
    if (last && isGone(last) && m_downloadCallback)
        std::exchange(m_downloadCallback, nullptr)(false, last);
}

void ZCutoutPresetItemManager::showDownloadFailToast()
{
    ZkToast::creatToast(tr("Download failed. Please try again later."),
                        QApplication::activeWindow(),
                        QPixmap(QStringLiteral(":/Resource/icon24_toast_error.png")),
                        ToastTopMargin)
        ->showToast();
}

IZkAbstractMediaItem *ZCutoutPresetItemManager::findMediaItemBySlug(const QString &slug) const
{
    const QVector<QModelIndex> indexes = m_model->getAllIndexes();
    for (const QModelIndex &index : indexes) {
        IZkAbstractMediaItem *const item = ZCutoutPresetItemModel::mediaItemFromIndex(index);
        if (item && item->slug() == slug)
            return item;
    }
    return nullptr;
}

void ZCutoutPresetItemManager::beforeCategoryTreeReload() { }

void ZCutoutPresetItemManager::afterCategoryTreeReload()
{
    loadCutoutPresetFolder();
    abandonRemovedDownloads();
}
