#pragma once

#include <QObject>

namespace zk::datamodel {
class Project;
}

namespace zk::app {

class WindowActions;
class WorkspaceHost;

// Undo and Redo of the window, for the workspace while it is open and for the project otherwise. What is
// being typed is taken over first.
class UndoActions : public QObject
{
    Q_OBJECT

public:
    // None of them is owned; all must outlive it.
    UndoActions(datamodel::Project *project,
                const WindowActions &actions,
                WorkspaceHost *workspace);

    void refresh();

private:
    void undo();
    void redo();

    datamodel::Project *const m_project;
    const WindowActions &m_actions;
    WorkspaceHost *const m_workspace;
};

} // namespace zk::app
