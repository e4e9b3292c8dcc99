#include "CatalogueMerge_p.h"

#include <ZkDataModel.h>

#include <QHash>
#include <QSet>

namespace zk::datamodel {

using storage::ItemOrigin;
using storage::PresetItem;
using storage::PresetStore;
using storage::Resource;

namespace {

void takeOffer(Resource *resource, const Resource &offer)
{
    resource->url = offer.url;
    resource->sha256 = offer.sha256;
    resource->size = offer.size;
}

bool isSameOffer(const Resource &a, const Resource &b)
{
    return a.url == b.url && a.sha256 == b.sha256 && a.size == b.size;
}

bool isSame(const PresetItem &a, const PresetItem &b)
{
    return a.name == b.name && a.kind == b.kind && a.folder == b.folder && a.version == b.version
        && a.position == b.position && a.origin == b.origin && isSameOffer(a.thumbnail, b.thumbnail)
        && isSameOffer(a.package, b.package);
}

// Folders are made as they are needed, and looked up once.
class Folders
{
public:
    explicit Folders(PresetStore &store)
        : m_store(store)
    { }
    qint64 at(const QStringList &path)
    {
        qint64 &id = m_ids[path];
        if (id == 0)
            id = m_store.ensureFolder(ZKVBLMODEL::SmartCutoutCategory, path);
        return id;
    }
    QVector<qint64> ids() const { return m_ids.values().toVector(); }

private:
    PresetStore &m_store;
    QHash<QStringList, qint64> m_ids;
};

bool mergeItem(
    PresetStore &store, const CatalogueItem &offer, qint64 folder, int position, ItemOrigin origin)
{
    PresetItem before;
    const bool isKnown = store.findItem(offer.slug, &before);
    if (isKnown && before.origin != origin && before.version >= offer.version)
        return true;
    PresetItem item = before;
    item.slug = offer.slug;
    item.name = offer.name;
    item.kind = ZKVBLMODEL::PresetMedia;
    item.folder = folder;
    item.version = offer.version;
    item.position = position;
    item.origin = origin;
    takeOffer(&item.package, offer.package);
    takeOffer(&item.thumbnail, offer.thumbnail);
    return (isKnown && isSame(before, item)) || store.saveItem(&item);
}

bool removeOthers(PresetStore &store,
                  const QSet<QString> &offered,
                  ItemOrigin origin,
                  const std::function<bool(qint64)> &isBusy)
{
    const QVector<PresetItem> items = store.items();
    for (const PresetItem &item : items) {
        const bool isChosen = origin == ItemOrigin::Server && item.package.isOnDisk();
        if (item.origin != origin || offered.contains(item.slug) || isChosen || isBusy(item.id))
            continue;
        if (!store.removeItem(item.id))
            return false;
    }
    return true;
}

} // namespace

bool mergeCatalogue(PresetStore &store,
                    const Catalogue &catalogue,
                    ItemOrigin origin,
                    const std::function<bool(qint64)> &isBusy)
{
    PresetStore::Transaction transaction(store);
    Folders folders(store);
    if (!store.saveCategory({ZKVBLMODEL::SmartCutoutCategory, QStringLiteral("Smart cutout")}))
        return false;
    // The folder of the presets is looked for even when it is empty.
    bool isGood = folders.at(cutoutPresetFolder()) != 0;
    for (const QStringList &path : catalogue.folders)
        isGood = isGood && folders.at(path) != 0;

    QSet<QString> offered;
    int position = 0;
    for (const CatalogueItem &item : catalogue.items) {
        offered.insert(item.slug);
        const qint64 folder = isGood ? folders.at(item.folder) : 0;
        isGood = folder != 0 && mergeItem(store, item, folder, position++, origin);
    }
    return isGood && removeOthers(store, offered, origin, isBusy)
        && store.removeEmptyFolders(ZKVBLMODEL::SmartCutoutCategory, folders.ids())
        && transaction.commit();
}

} // namespace zk::datamodel
