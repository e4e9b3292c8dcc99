#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>

#include <functional>

class IZkUndoRedoService;
class QStackedWidget;
class ZkStudioProjectManager;

namespace zk::datamodel {
class Project;
class ProjectClip;
} // namespace zk::datamodel

namespace zk::app {

class WorkspacePage;

// Shows the workspace of one clip in place of the editor's page, and takes it away again. What is done
// there is part of the project from the first stroke on, as a draft; Apply and Cancel end that.
class WorkspaceHost : public QObject
{
    Q_OBJECT

public:
    // None is owned; project and manager must outlive the host.
    WorkspaceHost(QStackedWidget *pages,
                  datamodel::Project *project,
                  ZkStudioProjectManager *manager);
    ~WorkspaceHost() override;

    bool isOpen() const { return page(); }
    WorkspacePage *page() const; // null: none
    // Does nothing while one is open. The clip must be one of the project and stay until closed().
    void open(datamodel::ProjectClip *clip);
    // Runs the function when no workspace is open any more, at once if none is. The user may keep it open;
    // then the function is forgotten.
    void closeThen(std::function<void()> function);

Q_SIGNALS:
    void opened();
    void closed(bool applied);
    void undoRedoChanged();
    void notice(const QString &text);

private:
    void watch(datamodel::ProjectClip *clip);
    void onClosed(bool applied);

    QStackedWidget *const m_pages;
    datamodel::Project *const m_project;
    ZkStudioProjectManager *const m_manager;
    QPointer<WorkspacePage> m_page;
    std::function<void()> m_next; // waits for the page to close
};

} // namespace zk::app
