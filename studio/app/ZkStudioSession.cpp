#include "ZkStudioSession.h"

#include "ZkEventWait.h"

#include "ZCutoutPresetItemManager.h"
#include "ZCutoutPresetItemModel.h"
#include "ZkAIErasingPresenter.h"
#include "library/ZkStudioMediaLibrary.h"
#include "library/ZkStudioProjectManager.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioTimeline.h"

#include <QStandardPaths>

namespace zk::app {

namespace {

QString userLibrary()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/presets");
}

} // namespace

StudioSession::StudioSession() = default;

StudioSession::~StudioSession()
{
    endWorkspace();
}

bool StudioSession::openLibrary(const QString &folder, const QString &server, QString *error)
{
    datamodel::LibrarySettings settings;
    settings.directory = folder.isEmpty() ? userLibrary() : folder;
    settings.server = QUrl(server, QUrl::StrictMode);
    settings.effectFactory = &ZkStudioEffect::fromLookJson;
    if (!server.isEmpty() && !settings.server.isValid()) {
        *error =
            QStringLiteral("%1 is not an address, give one like http://host/presets").arg(server);
        return false;
    }
    m_project = std::make_unique<ZkStudioProjectManager>(settings);
    *error = m_project->libraryError();
    if (!error->isEmpty() || server.isEmpty())
        return error->isEmpty();

    int result = -1;
    QObject scope;
    QObject::connect(m_project->studioLibrary(),
                     &ZkStudioMediaLibrary::sigRefreshFinished,
                     &scope,
                     [&](int code, const QString &text) {
                         result = code;
                         *error = text;
                     });
    const bool answered = m_project->studioLibrary()->refreshCatalogue()
        && waitUntil([&result] { return result >= 0; });
    return answered && result == 0;
}

bool StudioSession::openClip(const QString &path, QString *error)
{
    m_timeline = ZkStudioTimeline::fromMediaFile(path, error);
    return m_timeline != nullptr;
}

bool StudioSession::take(std::unique_ptr<ZkSmartKeyingPresenter> presenter, QString *error)
{
    *error = QStringLiteral("the clip cannot be edited, it has no readable picture");
    if (!presenter->isInitSuccessful())
        return false;
    m_presenter = std::move(presenter);
    error->clear();
    return true;
}

bool StudioSession::beginErasing(QString *error)
{
    auto presenter = std::make_unique<ZkAIErasingPresenter>(m_timeline->clip());
    ZkAIErasingPresenter *erasing = presenter.get();
    if (!take(std::move(presenter), error))
        return false;
    m_erasing = erasing;
    return true;
}

bool StudioSession::beginSmartCutout(QString *error)
{
    m_presetsLoaded = false;
    if (!take(std::make_unique<ZkSmartKeyingPresenter>(ZKSMARTKEYING::SmartCutout,
                                                       m_timeline->clip()),
              error))
        return false;
    QObject::connect(m_presenter.get(), &ZkSmartKeyingPresenter::sigEffectMediaItemsLoaded, [this] {
        m_presetsLoaded = true;
    });
    m_presenter->presetManager()->itemModel()->addVirtualNoneItem();
    return true;
}

void StudioSession::endWorkspace()
{
    if (m_presenter)
        m_presenter->setClosing(true);
    m_erasing = nullptr;
    m_presenter.reset();
}

QModelIndex StudioSession::findPreset(const QString &slug) const
{
    const ZCutoutPresetItemModel *model = m_presenter->presetManager()->itemModel();
    const QVector<QModelIndex> indexes = model->getAllIndexes();
    for (const QModelIndex &index : indexes) {
        if (index.data(ZCutoutPresetItemModel::SlugRole).toString() == slug)
            return index;
    }
    return QModelIndex();
}

datamodel::RenderSnapshot StudioSession::snapshot() const
{
    return datamodel::RenderSnapshot(*m_timeline);
}

} // namespace zk::app
