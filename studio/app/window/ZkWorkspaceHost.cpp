#include "ZkWorkspaceHost.h"

#include "ZkWorkspacePage.h"

#include "ZkSmartKeyingPresenter.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"

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
                             ZkStudioProjectManager *manager)
    : m_pages(pages)
    , m_project(project)
    , m_manager(manager)
{ }

WorkspaceHost::~WorkspaceHost()
{
    delete m_page;
}

WorkspacePage *WorkspaceHost::page() const
{
    return m_page;
}

void WorkspaceHost::open(datamodel::ProjectClip *clip)
{
    if (m_page)
        return;
    m_page = new WorkspacePage(clip->clip(), m_manager, m_pages);
    m_page->restoreLayout(QSettings().value(layoutKey()).toByteArray());
    connect(m_page, &WorkspacePage::closed, this, &WorkspaceHost::onClosed);
    connect(m_page, &WorkspacePage::closeRefused, this, [this] { m_next = nullptr; });
    connect(m_page, &WorkspacePage::undoRedoChanged, this, &WorkspaceHost::undoRedoChanged);
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
    connect(m_page, &WorkspacePage::leaving, this, [this](bool byUser) {
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
    QSettings().setValue(layoutKey(), m_page->saveLayout());
    m_pages->removeWidget(m_page);
    m_page->deleteLater();
    m_page.clear();
    Q_EMIT closed(applied);
    if (const auto next = std::exchange(m_next, nullptr))
        next();
}

} // namespace zk::app
