#include "PresetRows_p.h"

namespace zk::storage {

namespace {

constexpr char itemColumns[] =
    "SELECT i.id, i.slug, i.name, i.kind, i.folder, i.version, i.position, i.origin,"
    " t.url, t.sha256, t.size, t.file, t.file_sha256, t.file_size,"
    " p.url, p.sha256, p.size, p.file, p.file_sha256, p.file_size"
    " FROM item i"
    " JOIN resource t ON t.item = i.id AND t.kind = 0"
    " JOIN resource p ON p.item = i.id AND p.kind = 2 ";

Resource readResource(const QSqlQuery &row, int column)
{
    Resource resource;
    resource.url = QUrl(row.value(column).toString());
    resource.sha256 = row.value(column + 1).toByteArray();
    resource.size = row.value(column + 2).toLongLong();
    resource.file = row.value(column + 3).toString();
    resource.fileSha256 = row.value(column + 4).toByteArray();
    resource.fileSize = row.value(column + 5).toLongLong();
    return resource;
}

PresetItem readItem(const QSqlQuery &row)
{
    PresetItem item;
    item.id = row.value(0).toLongLong();
    item.slug = row.value(1).toString();
    item.name = row.value(2).toString();
    item.kind = row.value(3).toInt();
    item.folder = row.value(4).toLongLong();
    item.version = row.value(5).toInt();
    item.position = row.value(6).toInt();
    item.origin = static_cast<ItemOrigin>(row.value(7).toInt());
    item.thumbnail = readResource(row, 8);
    item.package = readResource(row, 14);
    return item;
}

// Of the columns that are written, in their order.
QVariantList valuesOf(const PresetItem &item)
{
    return {item.slug,
            item.name,
            item.kind,
            item.folder,
            item.version,
            item.position,
            int(item.origin)};
}

} // namespace

bool PresetRows::readCategories(QVector<PresetCategory> *categories)
{
    QSqlQuery row;
    if (!m_database.run(QStringLiteral("SELECT id, name FROM category ORDER BY id"), {}, &row))
        return false;
    while (row.next())
        categories->append({row.value(0).toInt(), row.value(1).toString()});
    return true;
}

bool PresetRows::readFolders(int category, QVector<PresetFolder> *folders)
{
    QSqlQuery row;
    if (!m_database.run(QStringLiteral("WITH RECURSIVE tree (id, parent, name, position, depth) AS"
                                       " (SELECT id, 0, name, position, 0 FROM folder"
                                       "   WHERE category = ? AND parent IS NULL"
                                       "  UNION ALL"
                                       "  SELECT f.id, f.parent, f.name, f.position, t.depth + 1"
                                       "   FROM folder f JOIN tree t ON f.parent = t.id)"
                                       " SELECT id, parent, name, position FROM tree"
                                       " ORDER BY depth, parent, position, id"),
                        {category},
                        &row))
        return false;
    while (row.next()) {
        folders->append({row.value(0).toLongLong(),
                         category,
                         row.value(1).toLongLong(),
                         row.value(2).toString(),
                         row.value(3).toInt()});
    }
    return true;
}

bool PresetRows::readItems(QVector<PresetItem> *items)
{
    return readItemsWhere(
        QStringLiteral("ORDER BY i.folder, i.origin, i.position, i.id"), QVariant(), items);
}

bool PresetRows::findItem(const QString &slug, PresetItem *item)
{
    QVector<PresetItem> found;
    if (!readItemsWhere(QStringLiteral("WHERE i.slug = ?"), slug, &found) || found.isEmpty())
        return false;
    *item = found.first();
    return true;
}

bool PresetRows::findItem(qint64 id, PresetItem *item)
{
    QVector<PresetItem> found;
    if (!readItemsWhere(QStringLiteral("WHERE i.id = ?"), id, &found) || found.isEmpty())
        return false;
    *item = found.first();
    return true;
}

bool PresetRows::readItemsWhere(const QString &condition,
                                const QVariant &value,
                                QVector<PresetItem> *items)
{
    const QVariantList values = value.isValid() ? QVariantList {value} : QVariantList();
    QSqlQuery row;
    if (!m_database.run(QLatin1String(itemColumns) + condition, values, &row))
        return false;
    while (row.next())
        items->append(readItem(row));
    return true;
}

bool PresetRows::saveCategory(const PresetCategory &category)
{
    return m_database.run(QStringLiteral("INSERT INTO category (id, name) VALUES (?, ?)"
                                         " ON CONFLICT (id) DO UPDATE SET name = excluded.name"),
                          {category.id, category.name});
}

qint64 PresetRows::childFolder(int category, qint64 parent, const QString &name)
{
    return m_database.number(QStringLiteral("SELECT id FROM folder WHERE category = ?"
                                            " AND ifnull(parent, 0) = ? AND name = ?"),
                             {category, parent, name});
}

qint64 PresetRows::addFolder(int category, qint64 parent, const QString &name)
{
    const QVariant parentValue = parent == 0 ? QVariant(QVariant::LongLong) : QVariant(parent);
    QSqlQuery query;
    if (!m_database.run(QStringLiteral("INSERT INTO folder (category, parent, name, position)"
                                       " SELECT ?, ?, ?, 1 + ifnull(max(position), -1) FROM folder"
                                       " WHERE category = ? AND ifnull(parent, 0) = ?"),
                        {category, parentValue, name, category, parent},
                        &query))
        return 0;
    return query.lastInsertId().toLongLong();
}

bool PresetRows::removeFolderIfEmpty(qint64 id)
{
    return m_database.run(QStringLiteral("DELETE FROM folder WHERE id = ?"
                                         " AND id NOT IN (SELECT folder FROM item)"
                                         " AND id NOT IN (SELECT parent FROM folder"
                                         "  WHERE parent IS NOT NULL)"),
                          {id});
}

bool PresetRows::saveItem(PresetItem *item)
{
    if (item->id == 0)
        return insertItem(item);
    return m_database.change(QStringLiteral("UPDATE item SET slug = ?, name = ?, kind = ?,"
                                            " folder = ?, version = ?, position = ?, origin = ?"
                                            " WHERE id = ?"),
                             valuesOf(*item) << item->id);
}

bool PresetRows::insertItem(PresetItem *item)
{
    QSqlQuery query;
    if (!m_database.run(QStringLiteral("INSERT INTO item (slug, name, kind, folder, version,"
                                       " position, origin) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                        valuesOf(*item),
                        &query))
        return false;
    item->id = query.lastInsertId().toLongLong();
    return true;
}

bool PresetRows::saveOffer(qint64 item, ResourceKind kind, const Resource &resource)
{
    return m_database.run(QStringLiteral("INSERT INTO resource (item, kind, url, sha256, size)"
                                         " VALUES (?, ?, ?, ?, ?)"
                                         " ON CONFLICT (item, kind) DO UPDATE SET"
                                         " url = excluded.url, sha256 = excluded.sha256,"
                                         " size = excluded.size"),
                          {item,
                           int(kind),
                           resource.url.toString(QUrl::FullyEncoded),
                           QString::fromLatin1(resource.sha256),
                           resource.size});
}

bool PresetRows::removeItem(qint64 id)
{
    return m_database.change(QStringLiteral("DELETE FROM item WHERE id = ?"), {id});
}

bool PresetRows::saveFile(qint64 item, ResourceKind kind, const Resource &resource)
{
    return updateFile(
        item, kind, {resource.file, QString::fromLatin1(resource.fileSha256), resource.fileSize});
}

bool PresetRows::forgetFile(qint64 item, ResourceKind kind)
{
    return updateFile(item, kind, {QVariant(), QVariant(), QVariant()});
}

bool PresetRows::updateFile(qint64 item, ResourceKind kind, const QVariantList &values)
{
    return m_database.change(QStringLiteral("UPDATE resource SET file = ?, file_sha256 = ?,"
                                            " file_size = ? WHERE item = ? AND kind = ?"),
                             values + QVariantList {item, int(kind)});
}

} // namespace zk::storage
