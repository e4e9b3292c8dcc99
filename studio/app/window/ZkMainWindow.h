#pragma once

#include "ZkClipCommands.h"
#include "ZkEditorConfig.h"
#include "ZkErasingDesk.h"
#include "ZkProjectController.h"
#include "ZkScene.h"
#include "ZkUndoActions.h"
#include "ZkWindowActions.h"
#include "ZkWorkspaceHost.h"

#include "ZkModelChoice.h"
#include "project/ZkProject.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QToolBar;
class ZkStudioProjectManager;

namespace zk::app {

class EditorPage;
class ExportDialog;
class Language;

// The editor's window.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The language is not owned and must outlive the window.
    MainWindow(const EditorConfig &config, Language *language);
    ~MainWindow() override;

    // Opens the first project among the files, and imports the others as clips.
    void openFiles(const QStringList &files);
    // Offers what a crash has left. Called once, when the window is on screen.
    void offerRecovery() { m_controller->offerRecovery(); }

    datamodel::Project *project() const { return m_project.get(); }
    WorkspaceHost *workspace() const { return m_workspace.get(); }
    EraseTasks *eraseTasks() const { return m_erasing->tasks(); }

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void setUpLibrary(const EditorConfig &config);
    void setUpModels(const EditorConfig &config);
    void setUpMenus();
    QMenu *addMenu(const std::initializer_list<ActionId> &ids);
    void setUpToolBar();
    void setUpStatusBar();
    void connectActions();
    void connectParts();
    void retranslate();
    void showTitle();
    void showNotice(const QString &text);
    void showImport(int done, int count, const QString &file);
    void openWorkspace(Workspace workspace);
    void startNew();
    void onWorkspaceOpened();
    void onWorkspaceClosed();
    void openExport();
    void reopenExport();
    void openSettings();
    void openShortcuts();
    void openProject(const QString &path);
    bool mayClose();
    void saveLayout() const;
    void restoreLayout();

    Language *const m_language;
    SceneView m_scene;
    std::unique_ptr<ZkStudioProjectManager> m_manager;
    models::ModelChoice m_models;
    std::unique_ptr<datamodel::Project> m_project;
    WindowActions m_actions;
    QStackedWidget *m_pages;
    EditorPage *m_editor;
    QVector<QMenu *> m_menus; // in the order of the bar
    QMenu *m_recentMenu = nullptr;
    QToolBar *m_toolBar = nullptr;
    QWidget *m_importState = nullptr; // in the status bar, while files are read
    QLabel *m_importText = nullptr;
    QProgressBar *m_importBar = nullptr;
    QPushButton *m_importCancel = nullptr;
    QPointer<ExportDialog> m_export;
    std::unique_ptr<ErasingDesk> m_erasing;
    std::unique_ptr<WorkspaceHost> m_workspace;
    std::unique_ptr<ProjectController> m_controller;
    std::unique_ptr<ClipCommands> m_commands;
    std::unique_ptr<UndoActions> m_undo;
};

} // namespace zk::app
