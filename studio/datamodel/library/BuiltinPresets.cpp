#include "BuiltinPresets_p.h"

#include "ZkDurableFile.h"
#include "ZkLookCatalogue.h"

#include <QBuffer>
#include <QImage>

namespace zk::datamodel {

using storage::PresetItem;
using storage::PresetStore;
using storage::Resource;
using storage::ResourceKind;

namespace {

void offer(Resource *resource, const QByteArray &bytes)
{
    resource->sha256 = storage::sha256Of(bytes);
    resource->size = bytes.size();
}

} // namespace

QByteArray packageOf(const effects::Look &look)
{
    return look.toJson();
}

QByteArray thumbnailOf(const effects::Look &look)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    effects::renderThumbnail(look).save(&buffer, "PNG");
    return bytes;
}

void BuiltinPresets::setLooks(const QVector<effects::Look> &looks)
{
    m_looks = looks;
    m_indexes.clear();
    for (int i = 0; i < looks.size(); ++i)
        m_indexes.insert(looks.at(i).slug, i);
}

Catalogue BuiltinPresets::catalogue() const
{
    Catalogue catalogue;
    for (const effects::Look &look : m_looks) {
        const QByteArray package = packageOf(look);
        CatalogueItem item;
        item.slug = look.slug;
        item.name = look.name;
        item.folder = cutoutPresetFolder();
        item.version = look.version;
        offer(&item.package, package);
        item.thumbnail = thumbnailOffer(look, item.package.sha256);
        catalogue.items.append(item);
    }
    return catalogue;
}

Resource BuiltinPresets::thumbnailOffer(const effects::Look &look, const QByteArray &package) const
{
    PresetItem known;
    Resource thumbnail;
    if (m_store.findItem(look.slug, &known) && known.origin == storage::ItemOrigin::Builtin
        && known.package.sha256 == package) {
        thumbnail.sha256 = known.thumbnail.sha256;
        thumbnail.size = known.thumbnail.size;
    } else {
        offer(&thumbnail, thumbnailOf(look));
    }
    return thumbnail;
}

bool BuiltinPresets::canMake(const PresetItem &item) const
{
    return item.origin == storage::ItemOrigin::Builtin && m_indexes.contains(item.slug);
}

bool BuiltinPresets::make(const PresetItem &item, ResourceKind kind, QString *error)
{
    const effects::Look &look = m_looks.at(m_indexes.value(item.slug));
    const QByteArray bytes = kind == ResourceKind::Package ? packageOf(look) : thumbnailOf(look);
    // A newer renderer may draw another picture than the one that was announced.
    PresetItem made = item;
    offer(&made.resource(kind), bytes);
    const QString file = PresetStore::fileFor(made, kind);
    if (!storage::writeDurably(m_store.absolutePath(file), bytes, error))
        return false;
    PresetStore::Transaction transaction(m_store);
    if (m_store.saveItem(&made) && m_store.setFile(made.id, kind, file) && transaction.commit())
        return true;
    *error = m_store.errorText();
    return false;
}

bool BuiltinPresets::makeMissing(QString *error)
{
    PresetStore::Transaction transaction(m_store); // one commit for all of them
    bool isGood = true;
    const QVector<PresetItem> items = m_store.items();
    for (const PresetItem &item : items) {
        for (ResourceKind kind : {ResourceKind::Thumbnail, ResourceKind::Package}) {
            const Resource &resource = item.resource(kind);
            if (canMake(item) && (!resource.isOnDisk() || resource.hasUpdate()))
                isGood = make(item, kind, error) && isGood;
        }
    }
    if (transaction.commit())
        return isGood;
    *error = m_store.errorText();
    return false;
}

} // namespace zk::datamodel
