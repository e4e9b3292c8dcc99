// The rows of the preset library as statements. Not public.
#pragma once

#include "PresetDatabase_p.h"
#include "ZkPresetRecords.h"

#include <QVector>

namespace zk::storage {

constexpr ResourceKind resourceKinds[] = {ResourceKind::Thumbnail, ResourceKind::Package};

// Every method is one statement; what belongs together is joined by the caller's transaction.
// False, or a negative or zero id: database().errorText() says why.
class PresetRows
{
public:
    explicit PresetRows(PresetDatabase &database)
        : m_database(database)
    { }

    bool readCategories(QVector<PresetCategory> *categories);
    // Parents before children, siblings in their order.
    bool readFolders(int category, QVector<PresetFolder> *folders);
    // By folder; those of the program first, then in their order.
    bool readItems(QVector<PresetItem> *items);
    bool findItem(const QString &slug, PresetItem *item);
    bool findItem(qint64 id, PresetItem *item);

    bool saveCategory(const PresetCategory &category);
    qint64 childFolder(int category, qint64 parent, const QString &name);
    qint64 addFolder(int category, qint64 parent, const QString &name);
    bool removeFolderIfEmpty(qint64 id);

    // Inserts an item of id 0 and gives it its id.
    bool saveItem(PresetItem *item);
    bool saveOffer(qint64 item, ResourceKind kind, const Resource &resource);
    bool removeItem(qint64 id);
    bool saveFile(qint64 item, ResourceKind kind, const Resource &resource);
    bool forgetFile(qint64 item, ResourceKind kind);

private:
    bool
    readItemsWhere(const QString &condition, const QVariant &value, QVector<PresetItem> *items);
    bool insertItem(PresetItem *item);
    bool updateFile(qint64 item, ResourceKind kind, const QVariantList &values);

    PresetDatabase &m_database;
};

} // namespace zk::storage
