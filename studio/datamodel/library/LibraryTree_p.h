// The folders of the module with their media. Not public.
#pragma once

#include "LibraryNodes_p.h"

#include <QHash>

namespace zk::datamodel {

// How the tree differs from what the store holds now.
struct TreeDifference
{
    // Folders or the order of items have changed, or items have moved: only a new tree will do.
    bool needsReload = false;
    QVector<qint64> removed; // items
    QVector<storage::PresetItem> added; // each belongs at the end of its folder
};

class LibraryTree
{
public:
    // An item for every record must be in `items`, which outlive the tree. Records must be in the
    // store's order.
    LibraryTree(const QVector<storage::PresetFolder> &folders,
                const QVector<storage::PresetItem> &records,
                const QHash<qint64, LibraryItem *> &items);

    LibraryFolder *root() const { return m_root.get(); }
    LibraryFolder *folder(qint64 id) const { return m_folders.value(id); }
    // Null when it is not one of this tree.
    LibraryFolder *find(const IZkFolderMedia *folder) const;
    QVector<LibraryFolder *> folders() const; // with the root
    LibraryMedia *media(qint64 itemId) const { return m_medias.value(itemId); }
    // The folder that the item is in; null when it is in none.
    LibraryFolder *folderOf(qint64 itemId) const;

    // Behind the others of its folder; null when the tree lacks that folder.
    LibraryMedia *add(std::unique_ptr<LibraryMedia> media);
    std::unique_ptr<LibraryMedia> take(qint64 itemId);

    TreeDifference compare(const QVector<storage::PresetFolder> &folders,
                           const QVector<storage::PresetItem> &records) const;
    // Folders of the same id get the load state that they have in the other tree.
    void takeLoadStates(const LibraryTree &other);

private:
    bool haveFoldersChanged(const QVector<storage::PresetFolder> &folders) const;
    bool isOrderKept(const QVector<storage::PresetItem> &records,
                     const QVector<qint64> &removed) const;

    std::unique_ptr<LibraryFolder> m_root;
    QVector<storage::PresetFolder> m_folderRows;
    QHash<qint64, LibraryFolder *> m_folders;
    QHash<qint64, LibraryMedia *> m_medias;
};

} // namespace zk::datamodel
