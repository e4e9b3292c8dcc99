#include "ZkMainWindow.h"

#include "ZkClipListModel.h"
#include "ZkEditorPage.h"
#include "ZkExportDialog.h"
#include "ZkFocusKeys.h"
#include "ZkMediaBin.h"
#include "ZkPreferences.h"
#include "ZkPreviewPanel.h"
#include "ZkPrompts.h"
#include "ZkSettingsDialog.h"
#include "ZkShortcutsDialog.h"
#include "ZkTaskStrip.h"

#include "ZkWidgets.h"
#include "library/ZkStudioMediaLibrary.h"
#include "library/ZkStudioProjectManager.h"
#include "timeline/ZkStudioEffect.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace zk::app {

using datamodel::Project;

namespace {

constexpr QSize standardSize(1440, 900);

QString geometryKey()
{
    return QStringLiteral("window/geometry");
}

QString panelsKey()
{
    return QStringLiteral("window/panels");
}

bool isProject(const QString &file)
{
    return file.endsWith(projectSuffix(), Qt::CaseInsensitive);
}

std::unique_ptr<ZkStudioProjectManager> openLibrary(const EditorConfig &config)
{
    datamodel::LibrarySettings settings;
    settings.directory = config.libraryFolder.isEmpty()
        ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
            + QStringLiteral("/presets")
        : config.libraryFolder;
    settings.server = config.presetServer;
    settings.effectFactory = &ZkStudioEffect::fromLookJson;
    auto manager = std::make_unique<ZkStudioProjectManager>(settings);
    if (!config.presetServer.isEmpty())
        manager->studioLibrary()->refreshCatalogue();
    return manager;
}

} // namespace

MainWindow::MainWindow(const EditorConfig &config, Language *language)
    : m_language(language)
    , m_scene(this)
    , m_manager(openLibrary(config))
    , m_project(std::make_unique<Project>(m_manager.get()))
    , m_actions(this)
    , m_pages(new QStackedWidget(this))
    , m_editor(new EditorPage(m_project.get(), m_actions, &m_scene, m_pages))
    , m_erasing(std::make_unique<ErasingDesk>(
          m_project.get(), config.eraser, m_actions.action(ActionId::Account), this))
    , m_workspace(
          std::make_unique<WorkspaceHost>(m_pages, m_project.get(), m_manager.get(), &m_models))
    , m_controller(
          std::make_unique<ProjectController>(m_project.get(), config.autosaveFolder, this))
    , m_commands(std::make_unique<ClipCommands>(m_project.get(), m_actions, m_editor, this))
    , m_undo(std::make_unique<UndoActions>(m_project.get(), m_actions, m_workspace.get()))
{
    setObjectName(QStringLiteral("MainWindow"));
    setAcceptDrops(true);
    setWindowIcon(QApplication::windowIcon());
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Window/MainWindow"));
    m_pages->addWidget(m_editor);
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pages, 1);
    column->addWidget(m_erasing->strip());
    setCentralWidget(centre);
    setUpModels(config);
    setUpMenus();
    setUpToolBar();
    setUpStatusBar();
    connectActions();
    connectParts();
    retranslate();
    restoreLayout();
    if (!m_manager->libraryError().isEmpty())
        statusBar()->showMessage(tr("Presets: %1").arg(m_manager->libraryError()));
}

MainWindow::~MainWindow()
{
    // Widgets go before the project that they show; whatever runs is cancelled and waited for.
    delete m_export;
    m_undo.reset();
    m_commands.reset();
    m_controller.reset();
    m_workspace.reset();
    m_erasing.reset();
    delete m_editor;
}

void MainWindow::openFiles(const QStringList &files)
{
    ImportRequest request;
    request.clipIndex = ImportRequest::atEnd;
    QString project;
    for (const QString &file : files) {
        if (!isProject(file))
            request.files.append(QDir().absoluteFilePath(file));
        else if (project.isEmpty())
            project = file;
    }
    if (!project.isEmpty())
        openProject(project);
    if (!request.files.isEmpty())
        m_commands->import(request);
}

void MainWindow::openProject(const QString &path)
{
    m_workspace->closeThen([this, path] {
        if (m_erasing->mayDrop())
            m_controller->open(path);
    });
}

void MainWindow::startNew()
{
    m_workspace->closeThen([this] {
        if (m_erasing->mayDrop())
            m_controller->startNew();
    });
}

void MainWindow::openWorkspace(Workspace workspace)
{
    datamodel::ProjectClip *clip = m_project->currentClip();
    if (!clip || clip->isOffline())
        return;
    m_editor->preview()->player()->stopPlay();
    m_workspace->open(clip, workspace);
}

void MainWindow::onWorkspaceOpened()
{
    m_actions.setWorkspaceOpen(true);
    m_erasing->setWorkspaceOpen(true);
    m_toolBar->hide();
}

void MainWindow::onWorkspaceClosed()
{
    m_actions.setWorkspaceOpen(false);
    m_erasing->setWorkspaceOpen(false);
    m_commands->refresh();
    m_undo->refresh();
    m_toolBar->show();
    m_pages->setCurrentWidget(m_editor);
}

void MainWindow::openExport()
{
    if (!m_export) {
        m_export = new ExportDialog(m_project.get(), this);
        m_export->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_export->show();
    m_export->raise();
    m_export->activateWindow();
}

// It has no texts that change while it is open.
void MainWindow::reopenExport()
{
    if (!m_export || m_export->isExporting())
        return;
    delete m_export;
    openExport();
}

void MainWindow::openSettings()
{
    if (SettingsDialog(m_language, &m_models, this).exec() != QDialog::Accepted)
        return;
    m_controller->readPreferences();
    m_erasing->tasks()->setModel(m_models.path(engine::EngineRole::Inpainting));
}

void MainWindow::openShortcuts()
{
    ShortcutsDialog(m_actions, this).exec();
}

bool MainWindow::mayClose()
{
    if (m_export && m_export->isExporting()
        && !askUser(this,
                    tr("Cancel the export?"),
                    tr("An export is under way. What it has written so far is removed."),
                    tr("Cancel the Export")))
        return false;
    delete m_export;
    if (!m_erasing->mayDrop() || !m_controller->mayClose())
        return false;
    m_erasing->drop();
    return true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    if (m_workspace->isOpen()) {
        m_workspace->closeThen([this] { close(); });
        return;
    }
    if (!mayClose())
        return;
    m_commands->importer()->cancel();
    saveLayout();
    event->accept();
}

bool MainWindow::event(QEvent *event)
{
    // Nobody on the way from the focused widget up to here has taken the key.
    if (event->type() == QEvent::ShortcutOverride && m_pages->currentWidget() == m_editor
        && belongsToFocus(*static_cast<QKeyEvent *>(event), QApplication::focusWidget())) {
        event->accept();
        return true;
    }
    return QMainWindow::event(event);
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        reopenExport();
    }
    // Files may have been moved or brought back meanwhile.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_workspace
        && !m_workspace->isOpen())
        m_project->checkMedia();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!m_workspace->isOpen() && !droppedFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList files = droppedFiles(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    const QPoint inBin = m_editor->mediaBin()->mapFrom(this, event->pos());
    if (m_editor->mediaBin()->rect().contains(inBin) && !isProject(files.first()))
        m_commands->import({files, ImportRequest::noClips});
    else
        openFiles(files);
}

void MainWindow::showTitle()
{
    setWindowTitle(m_controller->title());
    setWindowModified(m_project->isDirty());
}

void MainWindow::saveLayout() const
{
    QSettings settings;
    settings.setValue(geometryKey(), saveGeometry());
    settings.setValue(panelsKey(), m_editor->saveLayout());
}

void MainWindow::restoreLayout()
{
    const QSettings settings;
    if (!restoreGeometry(settings.value(geometryKey()).toByteArray()))
        resize(standardSize.boundedTo(screen()->availableSize()));
    if (settings.contains(panelsKey()))
        m_editor->restoreLayout(settings.value(panelsKey()).toByteArray());
    else if (minimumSizeHint().height() > screen()->availableSize().height())
        m_actions.action(ActionId::ShowTimeline)
            ->setChecked(false); // a small or much enlarged screen
}

} // namespace zk::app
