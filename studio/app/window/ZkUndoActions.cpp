#include "ZkUndoActions.h"

#include "ZkEditingPage.h"
#include "ZkScene.h"
#include "ZkWindowActions.h"
#include "ZkWorkspaceHost.h"

#include "project/ZkProject.h"
#include "undo/ZkStudioUndoRedoService.h"

#include <QAction>

namespace zk::app {

using datamodel::Project;

namespace {

// The workspace owns the keys while it is open; the menu shows them all the same.
QString withKey(const QString &text, bool isOwnedElsewhere, const QKeySequence &key)
{
    return isOwnedElsewhere ? text + QLatin1Char('\t') + key.toString(QKeySequence::NativeText)
                            : text;
}

} // namespace

UndoActions::UndoActions(Project *project, const WindowActions &actions, WorkspaceHost *workspace)
    : m_project(project)
    , m_actions(actions)
    , m_workspace(workspace)
{
    connect(project, &Project::undoRedoChanged, this, &UndoActions::refresh);
    connect(project, &Project::reset, this, &UndoActions::refresh);
    connect(workspace, &WorkspaceHost::opened, this, &UndoActions::refresh);
    connect(workspace, &WorkspaceHost::closed, this, &UndoActions::refresh);
    connect(workspace, &WorkspaceHost::undoRedoChanged, this, &UndoActions::refresh);
    connect(actions.action(ActionId::Undo), &QAction::triggered, this, &UndoActions::undo);
    connect(actions.action(ActionId::Redo), &QAction::triggered, this, &UndoActions::redo);
    refresh();
}

void UndoActions::refresh()
{
    const bool isWorkspace = m_workspace->isOpen();
    const IZkUndoRedoService *service =
        isWorkspace ? m_workspace->page()->undoRedoService() : m_project->undoRedoService();
    const QString undoText = service && service->canUndo() ? service->undoText() : QString();
    const QString redoText = service && service->canRedo() ? service->redoText() : QString();
    QAction *undo = m_actions.action(ActionId::Undo);
    QAction *redo = m_actions.action(ActionId::Redo);
    undo->setEnabled(service && service->canUndo());
    redo->setEnabled(service && service->canRedo());
    undo->setText(withKey(undoText.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undoText),
                          isWorkspace,
                          QKeySequence(Qt::CTRL + Qt::Key_Z)));
    redo->setText(withKey(redoText.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redoText),
                          isWorkspace,
                          QKeySequence(Qt::CTRL + Qt::Key_Y)));
}

void UndoActions::undo()
{
    if (m_workspace->isOpen()) {
        m_workspace->page()->undo();
        return;
    }
    commitFocusedEditor();
    m_project->undoRedoService()->undo();
}

void UndoActions::redo()
{
    if (m_workspace->isOpen()) {
        m_workspace->page()->redo();
        return;
    }
    commitFocusedEditor();
    m_project->undoRedoService()->redo();
}

} // namespace zk::app
