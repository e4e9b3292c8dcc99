// A media library in memory, and the project manager that hands it out.
#pragma once

#include "Journal.h"

#include "datamodel/ZkMediaLibrary.h"

namespace zk::fake {

class MediaItem : public IZkEffectMediaItem
{
public:
    MediaItem(qint64 id, const QString &slug)
        : m_id(id)
        , m_slug(slug)
    { }
    qint64 id() const override { return m_id; }
    QString slug() const override { return m_slug; }
    QString name() const override { return QStringLiteral("item ") + m_slug; }
    QString thumbnailPath() const override { return thumbnail; }
    bool needsDownload() const override { return missing; }
    ZkEffectPtr effect() const override { return described; }

    QString thumbnail;
    bool missing = false;
    ZkEffectPtr described;

private:
    qint64 m_id;
    QString m_slug;
};

class Media : public IZkAbstractMedia
{
public:
    Media(const QString &name, IZkAbstractMediaItem *item)
        : m_name(name)
        , m_item(item)
    { }
    int kind() const override { return mediaKind; }
    QString name() const override { return m_name; }
    IZkAbstractMediaItem *mediaItem() const override { return m_item; }

    int mediaKind = ZKVBLMODEL::PresetMedia;

private:
    QString m_name;
    IZkAbstractMediaItem *m_item;
};

class Folder : public IZkFolderMedia
{
public:
    explicit Folder(const QString &name)
        : m_name(name)
    { }
    int kind() const override { return ZKVBLMODEL::FolderMedia; }
    QString name() const override { return m_name; }
    IZkAbstractMediaItem *mediaItem() const override { return nullptr; }
    int loadState() const override { return state; }
    bool needsLoadAgain() const override { return loadAgain; }
    QVector<IZkAbstractMedia *> medias(bool recursive) const override
    {
        return recursive ? own + nested : own;
    }

    QVector<IZkAbstractMedia *> own;
    QVector<IZkAbstractMedia *> nested;
    int state = ZKVBLMODEL::zkmsLoading;
    bool loadAgain = false;

private:
    QString m_name;
};

// Every part of the library at once.
class MediaLibrary : public IZkMediaLibrary,
                     public IZkMediaLibraryModule,
                     public IZkMediaItemManager,
                     public IZkFolderMediaManager
{
public:
    IZkMediaLibraryModule *module(int category) const override
    {
        return category == ZKVBLMODEL::SmartCutoutCategory ? self() : nullptr;
    }
    IZkMediaItemManager *mediaItemManager() const override { return self(); }
    IZkFolderMediaManager *folderMediaManager() const override { return self(); }
    void addCategoryTreeObserver(IZkCategoryTreeEventObserver *who) override
    {
        treeObservers.add(who);
    }
    void removeCategoryTreeObserver(IZkCategoryTreeEventObserver *who) override
    {
        treeObservers.drop(who);
    }
    IZkFolderMedia *rootFolder() const override { return &root; }
    QVector<IZkFolderMedia *> folders(IZkFolderMedia *parent, bool recursive) const override
    {
        return parent == &root && recursive ? tree : QVector<IZkFolderMedia *>();
    }
    bool loadFolder(IZkFolderMedia *folder) override
    {
        note("library.loadFolder", folder->name());
        return true;
    }
    int downloadItem(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type) override
    {
        note("library.downloadItem", item->slug(), int(type));
        return downloadResult;
    }
    void addObserver(IZkMediaItemManagerEventObserver *who) override { observers.add(who); }
    void removeObserver(IZkMediaItemManagerEventObserver *who) override { observers.drop(who); }

    mutable Folder root {QStringLiteral("root")};
    QVector<IZkFolderMedia *> tree;
    int downloadResult = ZKVBLMODEL::DownloadStarted;
    Observers<IZkCategoryTreeEventObserver> treeObservers {"tree"};
    Observers<IZkMediaItemManagerEventObserver> observers {"library"};

private:
    MediaLibrary *self() const { return const_cast<MediaLibrary *>(this); }
};

// IZkProjectManager::getInstance() returns it while it lives.
class ProjectManager : public IZkProjectManager
{
public:
    ZKFAKES_EXPORT static ProjectManager *living;

    ProjectManager() { living = this; }
    ~ProjectManager() override { living = nullptr; }

    IZkMediaLibrary *mediaLibrary() const override { return &library; }
    QString projectId() const override { return QStringLiteral("project-9"); }
    bool isNewProject() const override { return true; }

    mutable MediaLibrary library;
};

} // namespace zk::fake
