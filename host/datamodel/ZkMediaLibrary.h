// The project and the library of media that the editor offers: categories, folders, items, downloads.
#pragma once

#include "../ZkGlobal.h"
#include "ZkTimeline.h"

#include <QMetaType>
#include <QString>
#include <QVector>

class IZkAbstractMedia;
class IZkAbstractMediaItem;
class IZkFolderMedia;

namespace ZKVBLMODEL {

enum ZkMediaKind {
    FolderMedia = 1,
    PresetMedia = 10,
};

enum ZkMediaDownloadType {
    DownloadThumbnail = 0,
    DownloadPreview = 1,
    DownloadPreset = 2,
};

// Results of IZkMediaItemManager::downloadItem.
enum ZkDownloadStart {
    DownloadRefused = 0, // an unknown item, or one without an address
    DownloadStarted = 1,
    DownloadRunning = 2, // it was under way already
};

enum ZkFolderLoadState {
    zkmsUnknow = 0,
    zkmsLoading = 1,
    zkmsFetchMoreError = 2,
    zkmsLoaded = 3,
    zkmsNeedLogin = 4,
};

// Modules of the media library.
enum ZkLibraryCategory {
    SmartCutoutCategory = 21,
};

} // namespace ZKVBLMODEL

// One entry of a folder: a folder, or something with an item behind it.
class ZK_INTERFACE IZkAbstractMedia
{
public:
    virtual ~IZkAbstractMedia() = default;
    virtual int kind() const = 0; // ZKVBLMODEL::ZkMediaKind
    virtual QString name() const = 0;
    // Null for a folder and for an entry of no item. Owned by the library.
    virtual IZkAbstractMediaItem *mediaItem() const = 0;
};
Q_DECLARE_METATYPE(IZkAbstractMedia *)

// A resource: its identity and what of it is on disk. Lives as long as the library, also when no
// folder offers it any more.
class ZK_INTERFACE IZkAbstractMediaItem
{
public:
    virtual ~IZkAbstractMediaItem() = default;
    virtual qint64 id() const = 0; // positive, unique in the library
    virtual QString slug() const = 0; // unique key string
    virtual QString name() const = 0;
    // Where the thumbnail is or will be; the file need not exist.
    virtual QString thumbnailPath() const = 0;
    // True until the resource itself is complete on disk.
    virtual bool needsDownload() const = 0;
};
Q_DECLARE_METATYPE(IZkAbstractMediaItem *)

// A resource that describes an effect.
class ZK_INTERFACE IZkEffectMediaItem : public IZkAbstractMediaItem
{
public:
    // The described effect; null when the resource is missing or damaged.
    virtual ZkEffectPtr effect() const = 0;
};

class ZK_INTERFACE IZkFolderMedia : public IZkAbstractMedia
{
public:
    virtual int loadState() const = 0; // ZKVBLMODEL::ZkFolderLoadState
    // True when one load call did not bring everything, so that another is needed.
    virtual bool needsLoadAgain() const = 0;
    // The folder's entries that are not folders, in library order; recursively with those of its
    // sub-folders. Owned by the library, valid until the next tree reload is over.
    virtual QVector<IZkAbstractMedia *> medias(bool recursive) const = 0;
};
Q_DECLARE_METATYPE(IZkFolderMedia *)

// Hears about the entries of all folders. Every callback comes on the GUI thread.
class ZK_INTERFACE IZkMediaItemManagerEventObserver
{
public:
    virtual ~IZkMediaItemManagerEventObserver() = default;
    virtual void onBeforeAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) = 0;
    virtual void onAfterAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) = 0;
    virtual void onBeforeRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) = 0;
    // The media still exists during the call.
    virtual void onAfterRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) = 0;
    virtual void onBeforeClearItemsEvent(IZkFolderMedia *folder) = 0;
    virtual void onAfterClearItemsEvent(IZkFolderMedia *folder) = 0;
    virtual void
    onBeforeMoveItemEvent(IZkFolderMedia *from, IZkFolderMedia *to, IZkAbstractMedia *media) = 0;
    virtual void
    onAfterMoveItemEvent(IZkFolderMedia *from, IZkFolderMedia *to, IZkAbstractMedia *media) = 0;
    // The folder has been loaded completely, sub-folders included.
    virtual void onAllMediaChangedFinishEvent(IZkFolderMedia *folder) = 0;
    // error 0: complete and usable on disk.
    virtual void onDownloadFinishedEvent(IZkAbstractMedia *media,
                                         ZKVBLMODEL::ZkMediaDownloadType type,
                                         int error) = 0;
    virtual void onDownloadProgressEvent(IZkAbstractMedia *media,
                                         ZKVBLMODEL::ZkMediaDownloadType type,
                                         int percent) = 0;
    virtual void onFetchMoreStateChangedEvent(IZkFolderMedia *folder, int state) = 0;
    virtual void onItemDataChangedEvent(IZkAbstractMedia *media) = 0;
    virtual void onMediaInfoChangedEvent(IZkAbstractMedia *media) = 0;
    virtual void onMediaStateChangedEvent(IZkAbstractMedia *media) = 0;
    virtual void onRemoveItemResultEvent(IZkAbstractMedia *media, bool removed) = 0;
    virtual void onRenameFolderEvent(IZkFolderMedia *folder) = 0;
    virtual void onRenameItemEvent(IZkAbstractMedia *media) = 0;
};

class ZK_INTERFACE IZkCategoryTreeEventObserver
{
public:
    virtual ~IZkCategoryTreeEventObserver() = default;
    virtual void beforeCategoryTreeReload() = 0;
    // Folders and media of before the reload die when this notice has been given to everybody.
    virtual void afterCategoryTreeReload() = 0;
};

class ZK_INTERFACE IZkMediaItemManager
{
public:
    virtual ~IZkMediaItemManager() = default;
    // Starts or continues loading; onAllMediaChangedFinishEvent follows, never from inside the call.
    // False when the folder is not one of the library.
    virtual bool loadFolder(IZkFolderMedia *folder) = 0;
    // Returns a ZkDownloadStart. onDownloadFinishedEvent follows every started download exactly once,
    // never from inside the call.
    virtual int downloadItem(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type) = 0;
    virtual void addObserver(IZkMediaItemManagerEventObserver *observer) = 0;
    virtual void removeObserver(IZkMediaItemManagerEventObserver *observer) = 0;
};

class ZK_INTERFACE IZkFolderMediaManager
{
public:
    virtual ~IZkFolderMediaManager() = default;
    // The sub-folders, recursively depth first.
    virtual QVector<IZkFolderMedia *> folders(IZkFolderMedia *parent, bool recursive) const = 0;
};

// One category of the library.
class ZK_INTERFACE IZkMediaLibraryModule
{
public:
    virtual ~IZkMediaLibraryModule() = default;
    virtual IZkFolderMedia *rootFolder() const = 0;
};

// Owned by the project manager, like everything that it hands out. GUI thread only.
class ZK_INTERFACE IZkMediaLibrary
{
public:
    virtual ~IZkMediaLibrary() = default;
    // Null for a category that the library lacks.
    virtual IZkMediaLibraryModule *module(int category) const = 0;
    virtual IZkMediaItemManager *mediaItemManager() const = 0;
    virtual IZkFolderMediaManager *folderMediaManager() const = 0;
    virtual void addCategoryTreeObserver(IZkCategoryTreeEventObserver *observer) = 0;
    virtual void removeCategoryTreeObserver(IZkCategoryTreeEventObserver *observer) = 0;
};

class ZKDATAMODEL_EXPORT IZkProjectManager
{
public:
    virtual ~IZkProjectManager();
    // Null while no project manager exists (before the host has started and after it has ended).
    static IZkProjectManager *getInstance();

    virtual IZkMediaLibrary *mediaLibrary() const = 0;
    virtual QString projectId() const = 0;
    // Whether the project has never been saved.
    virtual bool isNewProject() const = 0;
};
