#include "ZkCatalogue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

namespace zk::datamodel {

namespace {

constexpr int catalogueFormat = 1;
constexpr int maximumItems = 10000;
constexpr int maximumDepth = 8;

// Reads one object after the other and remembers the first thing that is wrong.
class CatalogueReader
{
public:
    explicit CatalogueReader(const QUrl &address)
        : m_address(address)
    { }

    Catalogue read(const QJsonObject &root);
    QString error() const { return m_error; }

private:
    void fail(const QString &where, const QString &what)
    {
        if (m_error.isEmpty())
            m_error = where + QStringLiteral(": ") + what;
    }
    QJsonArray array(const QJsonObject &object, const char *key);
    QString text(const QJsonObject &object, const char *key, const QString &where, int longest);
    qint64 number(const QJsonObject &object, const char *key, const QString &where, qint64 lowest);
    QStringList folder(const QString &path, const QString &where);
    storage::Resource resource(const QJsonObject &item, const char *key, const QString &where);
    QUrl url(const QString &address, const QString &where);
    CatalogueItem item(const QJsonObject &object, const QString &where);

    const QUrl m_address;
    QString m_error;
};

Catalogue CatalogueReader::read(const QJsonObject &root)
{
    Catalogue catalogue;
    if (root.value(QLatin1String("format")).toInt() != catalogueFormat) {
        fail(QStringLiteral("format"), QStringLiteral("only %1 is known").arg(catalogueFormat));
        return catalogue;
    }
    catalogue.version = int(number(root, "version", QStringLiteral("version"), 0));
    for (const QJsonValue &value : array(root, "folders"))
        catalogue.folders.append(folder(value.toString(), QStringLiteral("folders")));

    const QJsonArray items = array(root, "items");
    if (items.size() > maximumItems)
        fail(QStringLiteral("items"), QStringLiteral("at most %1").arg(maximumItems));
    QSet<QString> slugs;
    for (int i = 0; i < items.size() && m_error.isEmpty(); ++i) {
        const QString where = QStringLiteral("items[%1]").arg(i);
        catalogue.items.append(item(items.at(i).toObject(), where));
        const QString slug = catalogue.items.constLast().slug;
        if (slugs.contains(slug))
            fail(where, QStringLiteral("\"%1\" is there twice").arg(slug));
        slugs.insert(slug);
    }
    return catalogue;
}

QJsonArray CatalogueReader::array(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isArray())
        fail(QLatin1String(key), QStringLiteral("an array is expected"));
    return value.toArray();
}

QString
CatalogueReader::text(const QJsonObject &object, const char *key, const QString &where, int longest)
{
    const QString value = object.value(QLatin1String(key)).toString();
    if (value.isEmpty() || value.size() > longest)
        fail(where, QStringLiteral("%1: a text is expected").arg(QLatin1String(key)));
    return value;
}

qint64 CatalogueReader::number(const QJsonObject &object,
                               const char *key,
                               const QString &where,
                               qint64 lowest)
{
    const double value = object.value(QLatin1String(key)).toDouble(-1);
    if (value < double(lowest) || value > 2147483647.0 || value != double(qint64(value)))
        fail(where, QStringLiteral("%1: a whole number is expected").arg(QLatin1String(key)));
    return m_error.isEmpty() ? qint64(value) : lowest;
}

QStringList CatalogueReader::folder(const QString &path, const QString &where)
{
    const QStringList names = path.split(QLatin1Char('/'));
    if (names.contains(QString()) || names.size() > maximumDepth)
        fail(where, QStringLiteral("\"%1\" is no folder").arg(path));
    return names;
}

storage::Resource
CatalogueReader::resource(const QJsonObject &item, const char *key, const QString &where)
{
    static const QRegularExpression checksum(QStringLiteral("\\A[0-9a-f]{64}\\z"));
    const QString place = where + QLatin1Char('.') + QLatin1String(key);
    const QJsonObject object = item.value(QLatin1String(key)).toObject();
    storage::Resource resource;
    resource.url = url(text(object, "url", place, 2048), place);
    resource.size = number(object, "size", place, 1);
    const QString sha256 = text(object, "sha256", place, 64);
    if (!checksum.match(sha256).hasMatch())
        fail(place, QStringLiteral("sha256: 64 lower-case hexadecimal digits are expected"));
    resource.sha256 = sha256.toLatin1();
    return resource;
}

QUrl CatalogueReader::url(const QString &address, const QString &where)
{
    const QUrl url = m_address.resolved(QUrl(address));
    const bool isSecure = url.scheme() == QLatin1String("https");
    const bool isPlain =
        url.scheme() == QLatin1String("http") && m_address.scheme() != QLatin1String("https");
    if (!url.isValid() || url.host().isEmpty() || !(isSecure || isPlain))
        fail(where, QStringLiteral("\"%1\" is no acceptable address").arg(address));
    return url;
}

CatalogueItem CatalogueReader::item(const QJsonObject &object, const QString &where)
{
    // Becomes part of file names.
    static const QRegularExpression slug(QStringLiteral("\\A[a-z0-9-]{1,64}\\z"));
    CatalogueItem item;
    item.slug = text(object, "slug", where, 64);
    if (!slug.match(item.slug).hasMatch())
        fail(where, QStringLiteral("slug: lower-case letters, digits and '-' are expected"));
    item.name = text(object, "name", where, 200);
    item.folder = folder(text(object, "folder", where, 1000), where);
    item.version = int(number(object, "version", where, 1));
    item.package = resource(object, "package", where);
    item.thumbnail = resource(object, "thumbnail", where);
    return item;
}

QJsonObject toJson(const storage::Resource &resource)
{
    return {{QStringLiteral("url"), resource.url.toString(QUrl::FullyEncoded)},
            {QStringLiteral("size"), resource.size},
            {QStringLiteral("sha256"), QString::fromLatin1(resource.sha256)}};
}

QJsonObject toJson(const CatalogueItem &item)
{
    return {{QStringLiteral("slug"), item.slug},
            {QStringLiteral("name"), item.name},
            {QStringLiteral("folder"), item.folder.join(QLatin1Char('/'))},
            {QStringLiteral("version"), item.version},
            {QStringLiteral("package"), toJson(item.package)},
            {QStringLiteral("thumbnail"), toJson(item.thumbnail)}};
}

} // namespace

bool Catalogue::fromJson(const QByteArray &json,
                         const QUrl &address,
                         Catalogue *catalogue,
                         QString *error)
{
    QJsonParseError parsing;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parsing);
    CatalogueReader reader(address);
    const Catalogue read = reader.read(document.object());
    const QString problem = parsing.error == QJsonParseError::NoError
        ? reader.error()
        : QStringLiteral("byte %1: %2").arg(parsing.offset).arg(parsing.errorString());
    if (error)
        *error = problem;
    if (!problem.isEmpty())
        return false;
    *catalogue = read;
    return true;
}

QByteArray Catalogue::toJson() const
{
    QJsonArray folderArray;
    for (const QStringList &folder : folders)
        folderArray.append(folder.join(QLatin1Char('/')));
    QJsonArray itemArray;
    for (const CatalogueItem &item : items)
        itemArray.append(datamodel::toJson(item));
    return QJsonDocument(QJsonObject {{QStringLiteral("format"), catalogueFormat},
                                      {QStringLiteral("version"), version},
                                      {QStringLiteral("folders"), folderArray},
                                      {QStringLiteral("items"), itemArray}})
        .toJson();
}

QStringList cutoutPresetFolder()
{
    return {QStringLiteral("Cutout"), QStringLiteral("subject_smart_cutout_preset")};
}

} // namespace zk::datamodel
