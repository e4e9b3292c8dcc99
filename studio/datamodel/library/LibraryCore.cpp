#include "LibraryCore_p.h"

#include <QLoggingCategory>

namespace zk::datamodel {

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.library")

using Observer = IZkMediaItemManagerEventObserver;

constexpr int category = ZKVBLMODEL::SmartCutoutCategory;

bool isSameResource(const storage::Resource &a, const storage::Resource &b)
{
    return a.sha256 == b.sha256 && a.file == b.file && a.fileSha256 == b.fileSha256;
}

bool looksTheSame(const storage::PresetItem &a, const storage::PresetItem &b)
{
    return a.slug == b.slug && a.name == b.name && a.version == b.version
        && isSameResource(a.thumbnail, b.thumbnail) && isSameResource(a.package, b.package);
}

} // namespace

using storage::PresetFolder;
using storage::PresetItem;
using storage::PresetStore;

LibraryCore::LibraryCore(const LibrarySettings &settings)
    : store(settings.directory)
    , m_tree(std::make_shared<LibraryTree>(
          QVector<PresetFolder>(), QVector<PresetItem>(), QHash<qint64, LibraryItem *>()))
{
    m_services.store = &store;
    m_services.effectFactory = settings.effectFactory;
    m_services.reportDamage = [this](qint64 id, storage::ResourceKind kind) {
        QMetaObject::invokeMethod(
            this, [this, id, kind] { repair(id, kind); }, Qt::QueuedConnection);
    };
}

bool LibraryCore::open(QString *error)
{
    const PresetStore::OpenResult result = store.open();
    if (!store.isOpen()) {
        const bool isNewer = result == PresetStore::OpenResult::NewerVersion;
        qCWarning(log).noquote() << (isNewer ? "the preset library is a newer program's:"
                                             : "the preset library cannot be opened:")
                                 << store.errorText();
        if (error)
            *error = store.errorText();
        return false;
    }
    synchronise();
    return true;
}

void LibraryCore::repair(qint64 id, storage::ResourceKind kind)
{
    if (!store.clearFile(id, kind))
        qCWarning(log).noquote() << "an item cannot be taken back:" << store.errorText();
    LibraryMedia *const media = updateItem(id);
    if (media)
        itemObservers.notify(&Observer::onMediaStateChangedEvent, media);
}

void LibraryCore::synchronise()
{
    const NoticeScope::Enter enter(notices); // keeps everything alive to the end
    const QVector<PresetFolder> folders = store.folders(category);
    const QVector<PresetItem> records = store.items();
    const QSet<qint64> changed = takeRecords(records);
    const TreeDifference difference = m_tree->compare(folders, records);
    if (difference.needsReload)
        reload(folders, records);
    else
        change(difference);
    for (qint64 id : changed) {
        LibraryMedia *const media = m_tree->media(id);
        if (media)
            itemObservers.notify(&Observer::onItemDataChangedEvent, media);
    }
}

// Returns the known items that look different now.
QSet<qint64> LibraryCore::takeRecords(const QVector<PresetItem> &records)
{
    QSet<qint64> changed;
    for (const PresetItem &record : records) {
        LibraryItem *&item = m_items[record.id];
        if (!item) {
            m_ownedItems.push_back(std::make_unique<LibraryItem>(m_services, record));
            item = m_ownedItems.back().get();
            continue;
        }
        if (!looksTheSame(item->record(), record))
            changed.insert(record.id);
        item->setRecord(record);
    }
    return changed;
}

void LibraryCore::reload(const QVector<PresetFolder> &folders, const QVector<PresetItem> &records)
{
    treeObservers.notify(&IZkCategoryTreeEventObserver::beforeCategoryTreeReload);
    auto fresh = std::make_shared<LibraryTree>(folders, records, m_items);
    fresh->takeLoadStates(*m_tree);
    notices.bury(m_tree);
    m_tree = std::move(fresh);
    treeObservers.notify(&IZkCategoryTreeEventObserver::afterCategoryTreeReload);
}

void LibraryCore::change(const TreeDifference &difference)
{
    QSet<LibraryFolder *> changed;
    for (qint64 id : difference.removed)
        changed.insert(remove(id));
    for (const PresetItem &record : difference.added)
        changed.insert(add(record));
    announceLoaded(changed);
}

// Null when nothing had to be done, because an observer has made the library change once more.
LibraryFolder *LibraryCore::remove(qint64 id)
{
    LibraryFolder *const folder = m_tree->folderOf(id);
    if (!folder)
        return nullptr;
    itemObservers.notify(&Observer::onBeforeRemoveItemEvent, folder, m_tree->media(id));
    const std::shared_ptr<LibraryMedia> media = m_tree->take(id);
    if (!media)
        return nullptr;
    itemObservers.notify(&Observer::onAfterRemoveItemEvent, folder, media.get());
    notices.bury(media);
    return folder;
}

LibraryFolder *LibraryCore::add(const PresetItem &record)
{
    LibraryFolder *const folder = m_tree->folder(record.folder);
    auto media = std::make_unique<LibraryMedia>(*m_items.value(record.id));
    if (!folder || m_tree->media(record.id))
        return nullptr;
    itemObservers.notify(&Observer::onBeforeAddItemEvent, folder, media.get());
    if (m_tree->folder(record.folder) != folder || m_tree->media(record.id)) {
        notices.bury(std::shared_ptr<LibraryMedia>(std::move(media)));
        return nullptr;
    }
    LibraryMedia *const added = m_tree->add(std::move(media));
    itemObservers.notify(&Observer::onAfterAddItemEvent, folder, added);
    return folder;
}

// Folders list their sub-folders' media too, so a change concerns those above as well.
void LibraryCore::announceLoaded(const QSet<LibraryFolder *> &changed)
{
    QSet<LibraryFolder *> concerned;
    for (LibraryFolder *folder : changed) {
        for (; folder; folder = folder->parent())
            concerned.insert(folder);
    }
    for (LibraryFolder *folder : qAsConst(concerned)) {
        if (m_tree->find(folder) && folder->loadState() == ZKVBLMODEL::zkmsLoaded)
            itemObservers.notify(&Observer::onAllMediaChangedFinishEvent, folder);
    }
}

LibraryMedia *LibraryCore::updateItem(qint64 id)
{
    LibraryItem *const known = item(id);
    PresetItem record;
    if (known && store.findItem(id, &record))
        known->setRecord(record);
    return m_tree->media(id);
}

LibraryItem *LibraryCore::find(const IZkAbstractMediaItem *item) const
{
    for (LibraryItem *known : m_items) {
        if (known == item)
            return known;
    }
    return nullptr;
}

} // namespace zk::datamodel
