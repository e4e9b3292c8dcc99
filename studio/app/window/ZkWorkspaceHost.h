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

namespace zk::models {
class ModelChoice;
}

namespace zk::app {

class EditingPage;
struct EraseRequest;

enum class Workspace {
    SmartCutout,
    AIErase,
};

// Shows a workspace of one clip in place of the editor's page, and takes it away again. What is done there
// is part of the project from the first stroke on, as a draft; leaving it ends that.
class WorkspaceHost : public QObject
{
    Q_OBJECT

public:
    // None is owned; project, manager and models must outlive the host.
    WorkspaceHost(QStackedWidget *pages,
                  datamodel::Project *project,
                  ZkStudioProjectManager *manager,
                  models::ModelChoice *models);
    ~WorkspaceHost() override;

    bool isOpen() const { return page(); }
    EditingPage *page() const; // null: none
    // Does nothing while one is open. The clip must be one of the project and stay until closed().
    void open(datamodel::ProjectClip *clip, Workspace workspace);
    // Runs the function when no workspace is open any more, at once if none is. The user may keep it open;
    // then the function is forgotten.
    void closeThen(std::function<void()> function);

Q_SIGNALS:
    void opened();
    void closed(bool applied);
    void undoRedoChanged();
    void notice(const QString &text);
    // The page closes.
    void eraseRequested(const zk::app::EraseRequest &request);

private:
    EditingPage *createPage(datamodel::ProjectClip *clip, Workspace workspace);
    void watch(datamodel::ProjectClip *clip);
    void onClosed(bool applied);

    QStackedWidget *const m_pages;
    datamodel::Project *const m_project;
    ZkStudioProjectManager *const m_manager;
    models::ModelChoice *const m_models;
    QPointer<EditingPage> m_page;
    std::function<void()> m_next; // waits for the page to close
};

} // namespace zk::app
