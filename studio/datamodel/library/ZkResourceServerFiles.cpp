#include "ZkResourceServerFiles.h"

#include "BuiltinPresets_p.h"
#include "ZkDurableFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace zk::datamodel {

namespace {

using storage::Resource;
using storage::ResourceKind;

// Named after its content, so that a file that clients may be reading is never changed.
bool writeResource(const QDir &directory,
                   const QString &slug,
                   ResourceKind kind,
                   const QByteArray &bytes,
                   Resource *resource,
                   QString *error)
{
    storage::PresetItem item;
    item.slug = slug;
    resource->sha256 = storage::sha256Of(bytes);
    resource->size = bytes.size();
    item.resource(kind) = *resource;
    const QString file = storage::PresetStore::fileFor(item, kind);
    resource->url = QUrl(file);
    const QString path = directory.filePath(file);
    return storage::sha256OfFile(path) == resource->sha256
        || storage::writeDurably(path, bytes, error);
}

// 0 when there is no catalogue.
int versionOfCatalogue(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    return document.object().value(QLatin1String("version")).toInt();
}

} // namespace

bool writeResourceServerFiles(const QVector<effects::Look> &looks,
                              const QString &directory,
                              QString *error)
{
    const QDir root(directory);
    const QString path = root.filePath(QStringLiteral("catalogue.json"));
    Catalogue catalogue;
    catalogue.version = versionOfCatalogue(path) + 1;
    catalogue.folders.append(cutoutPresetFolder());
    for (const effects::Look &look : looks) {
        CatalogueItem item;
        item.slug = look.slug;
        item.name = look.name;
        item.folder = cutoutPresetFolder();
        item.version = look.version;
        if (!writeResource(
                root, look.slug, ResourceKind::Package, packageOf(look), &item.package, error)
            || !writeResource(root,
                              look.slug,
                              ResourceKind::Thumbnail,
                              thumbnailOf(look),
                              &item.thumbnail,
                              error))
            return false;
        catalogue.items.append(item);
    }
    return storage::writeDurably(path, catalogue.toJson(), error);
}

} // namespace zk::datamodel
