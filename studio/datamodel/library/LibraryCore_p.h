// What the parts of the media library share: the store, the objects that stand for its rows, and
// the observers. Not public.
#pragma once

#include "BuiltinPresets_p.h"
#include "LibraryNotices_p.h"
#include "LibraryTree_p.h"

#include <QObject>
#include <QSet>

namespace zk::datamodel {

class LibraryCore : public QObject
{
    Q_OBJECT

public:
    explicit LibraryCore(const LibrarySettings &settings);

    bool open(QString *error);

    // Makes tree and items what the store holds now, with every notice on the way.
    void synchronise();
    // The same for what one item has on disk. Its media; null when it is in no folder.
    LibraryMedia *updateItem(qint64 id);

    // Null when it is none of the library. Nothing is asked of the pointer, it may be an old one.
    LibraryItem *find(const IZkAbstractMediaItem *item) const;
    LibraryItem *item(qint64 id) const { return m_items.value(id); }
    QVector<LibraryItem *> items() const { return m_items.values().toVector(); }
    LibraryTree &tree() { return *m_tree; }

    storage::PresetStore store;
    BuiltinPresets builtin {store};
    NoticeScope notices;
    ItemObservers itemObservers {notices};
    TreeObservers treeObservers {notices};

private:
    void repair(qint64 id, storage::ResourceKind kind);
    QSet<qint64> takeRecords(const QVector<storage::PresetItem> &records);
    void reload(const QVector<storage::PresetFolder> &folders,
                const QVector<storage::PresetItem> &records);
    void change(const TreeDifference &difference);
    LibraryFolder *remove(qint64 id);
    LibraryFolder *add(const storage::PresetItem &record);
    void announceLoaded(const QSet<LibraryFolder *> &changed);

    ItemServices m_services;
    // Never shrinks: a download and its callback may outlive the item's place in the library.
    std::vector<std::unique_ptr<LibraryItem>> m_ownedItems;
    QHash<qint64, LibraryItem *> m_items;
    std::shared_ptr<LibraryTree> m_tree;
};

} // namespace zk::datamodel
