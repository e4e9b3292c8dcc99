#include "ZkStudioMediaLibrary.h"

#include "CatalogueMerge_p.h"
#include "CatalogueRefresh_p.h"
#include "MediaItemManager_p.h"

#include <QLoggingCategory>

using namespace zk::datamodel;
using zk::storage::ItemOrigin;

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.library")

class Module final : public IZkMediaLibraryModule
{
public:
    explicit Module(LibraryCore &core)
        : m_core(core)
    { }
    IZkFolderMedia *rootFolder() const override { return m_core.tree().root(); }

private:
    LibraryCore &m_core;
};

class FolderManager final : public IZkFolderMediaManager
{
public:
    explicit FolderManager(LibraryCore &core)
        : m_core(core)
    { }

    QVector<IZkFolderMedia *> folders(IZkFolderMedia *parent, bool recursive) const override
    {
        QVector<LibraryFolder *> found;
        if (const LibraryFolder *folder = m_core.tree().find(parent))
            folder->listFolders(recursive, &found);
        QVector<IZkFolderMedia *> result;
        result.reserve(found.size());
        for (LibraryFolder *folder : qAsConst(found))
            result.append(folder);
        return result;
    }

private:
    LibraryCore &m_core;
};

} // namespace

class ZkStudioMediaLibrary::Private
{
public:
    explicit Private(const LibrarySettings &settings)
        : core(settings)
        , module(core)
        , folderManager(core)
        , itemManager(core, settings.downloads)
        , refresh(core.store, settings.server, settings.downloads)
    { }

    bool merge(const Catalogue &catalogue, ItemOrigin origin);
    DownloadError take(const Catalogue &catalogue, QString *text);

    LibraryCore core;
    Module module;
    FolderManager folderManager;
    MediaItemManager itemManager;
    CatalogueRefresh refresh;
};

bool ZkStudioMediaLibrary::Private::merge(const Catalogue &catalogue, ItemOrigin origin)
{
    return mergeCatalogue(
        core.store, catalogue, origin, [this](qint64 id) { return itemManager.isBusy(id); });
}

DownloadError ZkStudioMediaLibrary::Private::take(const Catalogue &catalogue, QString *text)
{
    if (!merge(catalogue, ItemOrigin::Server)) {
        *text = core.store.errorText();
        return DownloadError::Disk;
    }
    qCInfo(log) << "catalogue" << catalogue.version << "with" << catalogue.items.size() << "items";
    core.synchronise();
    itemManager.fetchUpdates();
    return DownloadError::None;
}

ZkStudioMediaLibrary::ZkStudioMediaLibrary(const LibrarySettings &settings, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(settings))
{
    connect(&d->refresh,
            &CatalogueRefresh::finished,
            this,
            [this](DownloadError error, QString text, const Catalogue &catalogue) {
                if (error == DownloadError::None)
                    error = d->take(catalogue, &text);
                if (error != DownloadError::None) {
                    qCWarning(log).noquote() << "no catalogue:" << text;
                    d->itemManager.reportFetchMoreError();
                }
                Q_EMIT sigRefreshFinished(int(error), text);
            });
}

ZkStudioMediaLibrary::~ZkStudioMediaLibrary() = default;

bool ZkStudioMediaLibrary::open(QString *error)
{
    return d->core.open(error);
}

bool ZkStudioMediaLibrary::importLooks(const QVector<zk::effects::Look> &looks)
{
    if (!d->core.store.isOpen())
        return false;
    d->core.builtin.setLooks(looks);
    QString error = QStringLiteral("not merged");
    const bool isMerged = d->merge(d->core.builtin.catalogue(), ItemOrigin::Builtin);
    if (!isMerged)
        error = d->core.store.errorText();
    const bool isComplete = isMerged && d->core.builtin.makeMissing(&error);
    if (!isComplete)
        qCWarning(log).noquote() << "the program's presets are not complete:" << error;
    d->core.synchronise();
    return isComplete;
}

bool ZkStudioMediaLibrary::refreshCatalogue()
{
    return d->refresh.start();
}

bool ZkStudioMediaLibrary::cancelDownload(IZkAbstractMediaItem *item,
                                          ZKVBLMODEL::ZkMediaDownloadType type)
{
    return d->itemManager.cancel(item, type);
}

IZkMediaLibraryModule *ZkStudioMediaLibrary::module(int category) const
{
    return category == ZKVBLMODEL::SmartCutoutCategory ? &d->module : nullptr;
}

IZkMediaItemManager *ZkStudioMediaLibrary::mediaItemManager() const
{
    return &d->itemManager;
}

IZkFolderMediaManager *ZkStudioMediaLibrary::folderMediaManager() const
{
    return &d->folderManager;
}

void ZkStudioMediaLibrary::addCategoryTreeObserver(IZkCategoryTreeEventObserver *observer)
{
    d->core.treeObservers.add(observer);
}

void ZkStudioMediaLibrary::removeCategoryTreeObserver(IZkCategoryTreeEventObserver *observer)
{
    d->core.treeObservers.remove(observer);
}
