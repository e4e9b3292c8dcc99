#include "LibraryTree_p.h"

#include <QSet>

#include <algorithm>

namespace zk::datamodel {

using storage::PresetFolder;
using storage::PresetItem;

LibraryTree::LibraryTree(const QVector<PresetFolder> &folders,
                         const QVector<PresetItem> &records,
                         const QHash<qint64, LibraryItem *> &items)
    : m_root(std::make_unique<LibraryFolder>(0, QString(), nullptr))
    , m_folderRows(folders)
{
    m_folders.insert(0, m_root.get());
    for (const PresetFolder &row : folders)
        m_folders.insert(row.id, m_folders.value(row.parent)->addFolder(row.id, row.name));
    for (const PresetItem &record : records)
        add(std::make_unique<LibraryMedia>(*items.value(record.id)));
}

LibraryFolder *LibraryTree::find(const IZkFolderMedia *folder) const
{
    // The pointer may be an old one, so that nothing is asked of it.
    for (LibraryFolder *known : m_folders) {
        if (known == folder)
            return known;
    }
    return nullptr;
}

QVector<LibraryFolder *> LibraryTree::folders() const
{
    QVector<LibraryFolder *> folders {m_root.get()};
    m_root->listFolders(true, &folders);
    return folders;
}

LibraryFolder *LibraryTree::folderOf(qint64 itemId) const
{
    const LibraryMedia *const sought = media(itemId);
    for (LibraryFolder *folder : m_folders) {
        for (const std::unique_ptr<LibraryMedia> &own : folder->ownMedias()) {
            if (own.get() == sought)
                return folder;
        }
    }
    return nullptr;
}

LibraryMedia *LibraryTree::add(std::unique_ptr<LibraryMedia> media)
{
    LibraryFolder *const parent = m_folders.value(media->item().record().folder);
    if (!parent)
        return nullptr;
    LibraryMedia *const added = media.get();
    m_medias.insert(added->item().id(), added);
    parent->addMedia(std::move(media));
    return added;
}

std::unique_ptr<LibraryMedia> LibraryTree::take(qint64 itemId)
{
    LibraryFolder *const parent = folderOf(itemId);
    m_medias.remove(itemId);
    return parent ? parent->takeMedia(itemId) : nullptr;
}

TreeDifference LibraryTree::compare(const QVector<PresetFolder> &folders,
                                    const QVector<PresetItem> &records) const
{
    TreeDifference difference;
    QSet<qint64> present;
    for (const PresetItem &record : records) {
        present.insert(record.id);
        if (!media(record.id))
            difference.added.append(record);
    }
    for (auto known = m_medias.keyBegin(); known != m_medias.keyEnd(); ++known) {
        if (!present.contains(*known))
            difference.removed.append(*known);
    }
    difference.needsReload =
        haveFoldersChanged(folders) || !isOrderKept(records, difference.removed);
    return difference;
}

bool LibraryTree::haveFoldersChanged(const QVector<PresetFolder> &folders) const
{
    return !std::equal(folders.begin(),
                       folders.end(),
                       m_folderRows.begin(),
                       m_folderRows.end(),
                       [](const PresetFolder &a, const PresetFolder &b) {
                           return a.id == b.id && a.parent == b.parent && a.name == b.name;
                       });
}

// Taking out the removed items and appending the new ones to their folders must give the new order.
bool LibraryTree::isOrderKept(const QVector<PresetItem> &records,
                              const QVector<qint64> &removed) const
{
    QHash<qint64, QVector<qint64>> wanted;
    for (const PresetItem &record : records)
        wanted[record.folder].append(record.id);
    for (const LibraryFolder *folder : m_folders) {
        const QVector<qint64> ids = wanted.value(folder->id());
        int position = 0;
        for (const std::unique_ptr<LibraryMedia> &media : folder->ownMedias()) {
            const qint64 id = media->item().id();
            if (removed.contains(id))
                continue;
            if (position >= ids.size() || ids.at(position) != id)
                return false;
            ++position;
        }
        const bool isNewBehind = std::none_of(
            ids.begin() + position, ids.end(), [this](qint64 id) { return media(id) != nullptr; });
        if (!isNewBehind)
            return false;
    }
    return true;
}

void LibraryTree::takeLoadStates(const LibraryTree &other)
{
    for (LibraryFolder *folder : qAsConst(m_folders)) {
        const LibraryFolder *const same = other.folder(folder->id());
        if (same)
            folder->setLoadState(ZKVBLMODEL::ZkFolderLoadState(same->loadState()));
    }
}

} // namespace zk::datamodel
