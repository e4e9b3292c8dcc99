#include "ZkWorkspaceHost.h"

#include "ZkErasingPage.h"
#include "ZkWorkspacePage.h"

#include "ZkModelChoice.h"
#include "ZkSmartKeyingPresenter.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"
#include "undo/ZkStudioUndoRedoService.h"

#include <QSettings>
#include <QStackedWidget>

#include <utility>

namespace zk::app {

using datamodel::Project;

namespace {

QString layoutKey()
{
    return QStringLiteral("window/workspace");
}

} // namespace

WorkspaceHost::WorkspaceHost(QStackedWidget *pages,
                             Project *project,
                             ZkStudioProjectManager *manager,
                             models::ModelChoice *models)
    : m_pages(pages)
    , m_project(project)
    , m_manager(manager)
    , m_models(models)
{ }

WorkspaceHost::~WorkspaceHost()
{
    delete m_page;
}

EditingPage *WorkspaceHost::page() const
{
    return m_page;
}

EditingPage *WorkspaceHost::createPage(datamodel::ProjectClip *clip, Workspace workspace)
{
    if (workspace == Workspace::SmartCutout)
        return new WorkspacePage(clip->clip(), m_manager, m_pages);
    auto *page = new ErasingPage(clip->clip(), m_project->undoRedoService(), m_pages);
    connect(
        page, &ErasingPage::eraseRequested, this, [this, id = clip->id()](EraseRequest request) {
            request.clip = id;
            Q_EMIT eraseRequested(request);
        });
    return page;
}

void WorkspaceHost::open(datamodel::ProjectClip *clip, Workspace workspace)
{
    if (m_page)
        return;
    clip->timeline()->setEngine(m_models->engine());
    m_page = createPage(clip, workspace);
    m_page->restoreLayout(QSettings().value(layoutKey()).toByteArray());
    connect(m_page, &EditingPage::closed, this, &WorkspaceHost::onClosed);
    connect(m_page, &EditingPage::closeRefused, this, [this] { m_next = nullptr; });
    connect(m_page, &EditingPage::undoRedoChanged, this, &WorkspaceHost::undoRedoChanged);
    watch(clip);
    m_pages->addWidget(m_page);
    m_pages->setCurrentWidget(m_page);
    Q_EMIT opened();
}

void WorkspaceHost::watch(datamodel::ProjectClip *clip)
{
    if (!m_page->isOpen())
        return;
    const bool hasDraft = !clip->drafts().isEmpty();
    m_project->beginEditing(clip,
                            dynamic_cast<ZkStudioTimeline *>(m_page->presenter()->editTimeline()));
    connect(m_page, &EditingPage::leaving, this, [this](bool byUser) {
        m_project->endEditing(byUser ? Project::DraftFate::Dropped : Project::DraftFate::Kept);
    });
    if (hasDraft)
        Q_EMIT notice(tr("Your unfinished work is back. Undo takes it away."));
}

void WorkspaceHost::closeThen(std::function<void()> function)
{
    if (!m_page) {
        function();
        return;
    }
    m_next = std::move(function);
    m_page->requestClose();
}

void WorkspaceHost::onClosed(bool applied)
{
    const QByteArray layout = m_page->saveLayout();
    if (!layout.isEmpty())
        QSettings().setValue(layoutKey(), layout);
    m_pages->removeWidget(m_page);
    m_page->deleteLater();
    m_page.clear();
    Q_EMIT closed(applied);
    if (const auto next = std::exchange(m_next, nullptr))
        next();
}

} // namespace zk::app
