// Items, media and folders of the library as the module sees them. Not public.
#pragma once

#include "ZkLibrarySettings.h"
#include "ZkPresetStore.h"

#include <memory>
#include <vector>

namespace zk::datamodel {

// What items need of the library.
struct ItemServices
{
    storage::PresetStore *store = nullptr;
    EffectFactory effectFactory;
    // The file of an item was found missing or changed. May be called from inside a call of anyone.
    std::function<void(qint64 id, storage::ResourceKind kind)> reportDamage;
};

class LibraryItem final : public IZkEffectMediaItem
{
public:
    // The services outlive the item.
    LibraryItem(const ItemServices &services, storage::PresetItem record);

    const storage::PresetItem &record() const { return m_record; }
    void setRecord(const storage::PresetItem &record) { m_record = record; }

    qint64 id() const override;
    QString slug() const override;
    QString name() const override;
    QString thumbnailPath() const override;
    bool needsDownload() const override;
    // A new effect on every call.
    ZkEffectPtr effect() const override;

private:
    const ItemServices &m_services;
    storage::PresetItem m_record;
};

class LibraryMedia final : public IZkAbstractMedia
{
public:
    explicit LibraryMedia(LibraryItem &item)
        : m_item(item)
    { }

    LibraryItem &item() const { return m_item; }
    int kind() const override { return m_item.record().kind; }
    QString name() const override { return m_item.name(); }
    IZkAbstractMediaItem *mediaItem() const override { return &m_item; }

private:
    LibraryItem &m_item;
};

class LibraryFolder final : public IZkFolderMedia
{
public:
    LibraryFolder(qint64 id, const QString &name, LibraryFolder *parent)
        : m_id(id)
        , m_name(name)
        , m_parent(parent)
    { }

    qint64 id() const { return m_id; } // 0: the root
    LibraryFolder *parent() const { return m_parent; }
    void setLoadState(ZKVBLMODEL::ZkFolderLoadState state) { m_loadState = state; }

    LibraryFolder *addFolder(qint64 id, const QString &name);
    void addMedia(std::unique_ptr<LibraryMedia> media);
    // Null when it is not in this folder.
    std::unique_ptr<LibraryMedia> takeMedia(qint64 itemId);
    const std::vector<std::unique_ptr<LibraryMedia>> &ownMedias() const { return m_medias; }
    void listFolders(bool recursive, QVector<LibraryFolder *> *folders) const;

    int kind() const override { return ZKVBLMODEL::FolderMedia; }
    QString name() const override { return m_name; }
    IZkAbstractMediaItem *mediaItem() const override { return nullptr; }
    int loadState() const override { return m_loadState; }
    bool needsLoadAgain() const override { return false; }
    QVector<IZkAbstractMedia *> medias(bool recursive) const override;

private:
    const qint64 m_id;
    const QString m_name;
    LibraryFolder *const m_parent;
    ZKVBLMODEL::ZkFolderLoadState m_loadState = ZKVBLMODEL::zkmsUnknow;
    std::vector<std::unique_ptr<LibraryFolder>> m_folders;
    std::vector<std::unique_ptr<LibraryMedia>> m_medias;
};

} // namespace zk::datamodel
