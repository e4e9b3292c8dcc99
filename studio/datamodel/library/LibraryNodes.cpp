#include "LibraryNodes_p.h"

#include "ZkDurableFile.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>

namespace zk::datamodel {

namespace {

// The host's types are registered by the host's library: the functions that Qt keeps of them then stay when
// a module that uses them is unloaded.
[[maybe_unused]] const int mediaTypes[] = {qRegisterMetaType<IZkAbstractMedia *>(),
                                           qRegisterMetaType<IZkAbstractMediaItem *>(),
                                           qRegisterMetaType<IZkFolderMedia *>()};

Q_LOGGING_CATEGORY(log, "zk.studio.library")

} // namespace

using storage::PresetStore;
using storage::Resource;
using storage::ResourceKind;

LibraryItem::LibraryItem(const ItemServices &services, storage::PresetItem record)
    : m_services(services)
    , m_record(std::move(record))
{ }

qint64 LibraryItem::id() const
{
    return m_record.id;
}

QString LibraryItem::slug() const
{
    return m_record.slug;
}

QString LibraryItem::name() const
{
    return m_record.name;
}

QString LibraryItem::thumbnailPath() const
{
    const QString file = m_record.thumbnail.isOnDisk()
        ? m_record.thumbnail.file
        : PresetStore::fileFor(m_record, ResourceKind::Thumbnail);
    return m_services.store->absolutePath(file);
}

bool LibraryItem::needsDownload() const
{
    return !m_record.package.isOnDisk();
}

ZkEffectPtr LibraryItem::effect() const
{
    const Resource &package = m_record.package;
    if (!package.isOnDisk() || !m_services.effectFactory)
        return nullptr;
    QFile file(m_services.store->absolutePath(package.file));
    const QByteArray look = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (storage::sha256Of(look) != package.fileSha256) {
        qCWarning(log).noquote() << file.fileName() << "is missing or damaged";
        m_services.reportDamage(m_record.id, ResourceKind::Package);
        return nullptr;
    }
    QString error;
    const ZkEffectPtr effect = m_services.effectFactory(look, m_record.slug, &error);
    if (!effect)
        qCWarning(log).noquote() << file.fileName() << "describes no effect:" << error;
    return effect;
}

LibraryFolder *LibraryFolder::addFolder(qint64 id, const QString &name)
{
    m_folders.push_back(std::make_unique<LibraryFolder>(id, name, this));
    return m_folders.back().get();
}

void LibraryFolder::addMedia(std::unique_ptr<LibraryMedia> media)
{
    m_medias.push_back(std::move(media));
}

std::unique_ptr<LibraryMedia> LibraryFolder::takeMedia(qint64 itemId)
{
    const auto found = std::find_if(m_medias.begin(), m_medias.end(), [itemId](const auto &media) {
        return media->item().id() == itemId;
    });
    if (found == m_medias.end())
        return nullptr;
    std::unique_ptr<LibraryMedia> media = std::move(*found);
    m_medias.erase(found);
    return media;
}

void LibraryFolder::listFolders(bool recursive, QVector<LibraryFolder *> *folders) const
{
    for (const std::unique_ptr<LibraryFolder> &folder : m_folders) {
        folders->append(folder.get());
        if (recursive)
            folder->listFolders(true, folders);
    }
}

QVector<IZkAbstractMedia *> LibraryFolder::medias(bool recursive) const
{
    QVector<IZkAbstractMedia *> medias;
    for (const std::unique_ptr<LibraryMedia> &media : m_medias)
        medias.append(media.get());
    if (recursive) {
        for (const std::unique_ptr<LibraryFolder> &folder : m_folders)
            medias += folder->medias(true);
    }
    return medias;
}

} // namespace zk::datamodel
