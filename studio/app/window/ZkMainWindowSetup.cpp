// Menus, bars and the connections between the parts of the window.
#include "ZkActionButton.h"
#include "ZkClipList.h"
#include "ZkEditorPage.h"
#include "ZkMainWindow.h"
#include "ZkPreferences.h"
#include "ZkShortcutsDialog.h"

#include "ZkLanguage.h"
#include "ZkWidgets.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>

namespace zk::app {

using datamodel::Project;

namespace {

constexpr int noticeMs = 6000;
constexpr ActionId separator = ActionId(-1);
constexpr int importBarWidth = 140; // widget pixels

} // namespace

QMenu *MainWindow::addMenu(const std::initializer_list<ActionId> &ids)
{
    auto *menu = new ZkMenu(this);
    menu->setObjectName(QStringLiteral("Menu%1").arg(m_menus.size()));
    for (const ActionId id : ids) {
        if (id == separator)
            menu->addSeparator();
        else
            menu->addAction(m_actions.action(id));
    }
    menuBar()->addMenu(menu);
    m_menus.append(menu);
    return menu;
}

void MainWindow::setUpMenus()
{
    using Id = ActionId;
    QMenu *file = addMenu({Id::NewProject,
                           Id::OpenProject,
                           separator,
                           Id::SaveProject,
                           Id::SaveProjectAs,
                           separator,
                           Id::ImportMedia,
                           Id::ExportVideo,
                           separator,
                           Id::Quit});
    m_recentMenu = new ZkMenu(this);
    m_recentMenu->setObjectName(QStringLiteral("MenuRecent"));
    m_controller->recentFiles()->setMenu(m_recentMenu);
    file->insertMenu(file->actions().at(2), m_recentMenu);
    addMenu({Id::Undo, Id::Redo, separator, Id::RemoveClip, separator, Id::Settings, Id::Account});
    addMenu({Id::SmartCutout,
             Id::RemoveCutout,
             separator,
             Id::AIErase,
             separator,
             Id::AddToClips,
             Id::MoveEarlier,
             Id::MoveLater,
             separator,
             Id::RelinkClip});
    addMenu(
        {Id::PlayPause, Id::Stop, Id::PreviousFrame, Id::NextFrame, Id::FirstFrame, Id::LastFrame});
    addMenu({Id::ShowMedia,
             Id::ShowProperties,
             Id::ShowTimeline,
             separator,
             Id::FitPicture,
             Id::FitTimeline,
             Id::ZoomInTimeline,
             Id::ZoomOutTimeline,
             separator,
             Id::FullScreen,
             Id::ResetLayout});
    addMenu({Id::Shortcuts, Id::About});
}

void MainWindow::setUpToolBar()
{
    m_toolBar = addToolBar(QString());
    m_toolBar->setObjectName(QStringLiteral("MainToolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setFloatable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolBar->setIconSize(QSize(24, 24));
    const auto addButton = [this](ActionId id, ActionButton::Rank rank) {
        auto *button = new ActionButton(m_actions.action(id), m_toolBar, rank);
        button->setObjectName(QStringLiteral("ToolBar_") + m_actions.action(id)->objectName());
        m_toolBar->addWidget(button);
    };
    addButton(ActionId::ImportMedia, ActionButton::Rank::Normal);
    for (const ActionId id : {ActionId::Undo, ActionId::Redo}) {
        auto *button = new ZkToolButton(m_toolBar);
        button->setObjectName(QStringLiteral("ToolBar_") + m_actions.action(id)->objectName());
        button->setDefaultAction(m_actions.action(id));
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        button->setFocusPolicy(Qt::TabFocus);
        m_toolBar->addWidget(button);
    }
    addButton(ActionId::SmartCutout, ActionButton::Rank::Normal);
    addButton(ActionId::AIErase, ActionButton::Rank::Normal);
    auto *space = new QWidget(m_toolBar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_toolBar->addWidget(space);
    addButton(ActionId::ExportVideo, ActionButton::Rank::Primary);
}

void MainWindow::setUpModels(const EditorConfig &config)
{
    for (const engine::EngineRole role : engine::engineRoles) {
        const QString path = Preferences::modelFile(role);
        if (!path.isEmpty())
            m_models.readLater(role, path);
    }
    for (const models::ModelFile &given : config.models)
        m_models.choose(given.model->role(), given);
    m_erasing->tasks()->setModel(m_models.path(engine::EngineRole::Inpainting));
    connect(&m_models, &models::ModelChoice::failed, this, &MainWindow::showNotice);
}

void MainWindow::setUpStatusBar()
{
    m_importState = new QWidget(statusBar());
    m_importText = new QLabel(m_importState);
    m_importBar = ZkProgressBar::CreateMiniProgressBar(m_importState);
    m_importBar->setFixedWidth(importBarWidth);
    m_importBar->setObjectName(QStringLiteral("ImportProgress"));
    m_importCancel = new QPushButton(m_importState);
    m_importCancel->setObjectName(QStringLiteral("ImportCancel"));
    m_importCancel->setFocusPolicy(Qt::TabFocus);
    m_importCancel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *row = new QHBoxLayout(m_importState);
    row->setContentsMargins(0, 0, 8, 0);
    row->addWidget(m_importText);
    row->addWidget(m_importBar);
    row->addWidget(m_importCancel);
    statusBar()->setObjectName(QStringLiteral("StatusBar"));
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addPermanentWidget(m_importState);
    m_importState->hide();
    MediaImporter *importer = m_commands->importer();
    connect(m_importCancel, &QPushButton::clicked, importer, &MediaImporter::cancel);
    connect(importer, &MediaImporter::progress, this, &MainWindow::showImport);
    connect(importer, &MediaImporter::finished, this, [this, importer] {
        m_importState->setVisible(importer->isRunning());
    });
}

void MainWindow::showImport(int done, int count, const QString &file)
{
    m_importState->setVisible(m_commands->importer()->isRunning());
    m_importText->setText(tr("Importing %1").arg(file));
    m_importBar->setRange(0, count);
    m_importBar->setValue(done);
}

void MainWindow::connectActions()
{
    const auto on = [this](ActionId id, auto function) {
        connect(m_actions.action(id), &QAction::triggered, this, function);
    };
    on(ActionId::NewProject, [this] { startNew(); });
    on(ActionId::OpenProject, [this] {
        m_workspace->closeThen([this] {
            if (m_erasing->mayDrop())
                m_controller->open();
        });
    });
    on(ActionId::SaveProject, [this] {
        commitFocusedEditor();
        m_controller->save();
    });
    on(ActionId::SaveProjectAs, [this] { m_controller->saveAs(); });
    on(ActionId::ExportVideo, [this] { openExport(); });
    on(ActionId::Settings, [this] { openSettings(); });
    on(ActionId::Quit, [this] { close(); });
    on(ActionId::SmartCutout, [this] { openWorkspace(Workspace::SmartCutout); });
    on(ActionId::AIErase, [this] { openWorkspace(Workspace::AIErase); });
    on(ActionId::Shortcuts, [this] { openShortcuts(); });
    on(ActionId::About, [this] { showAbout(this); });
    connect(m_actions.action(ActionId::FullScreen), &QAction::toggled, this, [this](bool on) {
        setWindowState(windowState().setFlag(Qt::WindowFullScreen, on));
    });
}

void MainWindow::connectParts()
{
    connect(m_controller.get(), &ProjectController::titleChanged, this, &MainWindow::showTitle);
    connect(m_controller.get(), &ProjectController::openRequested, this, &MainWindow::openProject);
    connect(m_controller.get(), &ProjectController::notice, this, &MainWindow::showNotice);
    connect(m_editor->clipList(), &ClipList::activated, this, [this] {
        openWorkspace(Workspace::SmartCutout);
    });
    connect(m_workspace.get(), &WorkspaceHost::opened, this, &MainWindow::onWorkspaceOpened);
    connect(m_workspace.get(), &WorkspaceHost::closed, this, &MainWindow::onWorkspaceClosed);
    connect(m_workspace.get(), &WorkspaceHost::notice, this, &MainWindow::showNotice);
    connect(m_workspace.get(),
            &WorkspaceHost::eraseRequested,
            this,
            [this](const EraseRequest &request) { m_erasing->tasks()->add(request); });
    connect(m_erasing.get(), &ErasingDesk::notice, this, &MainWindow::showNotice);
    connect(m_erasing.get(), &ErasingDesk::selectionRequested, this, [this](qint64 clip) {
        m_project->checkMedia(); // the file may be back
        m_project->setCurrentClip(m_project->findClip(clip));
        openWorkspace(Workspace::AIErase);
    });
}

void MainWindow::showNotice(const QString &text)
{
    statusBar()->showMessage(text, noticeMs);
}

void MainWindow::retranslate()
{
    m_actions.retranslate();
    m_erasing->retranslate();
    m_erasing->tasks()->setLanguage(m_language->current());
    m_undo->refresh();
    const QStringList titles {
        tr("&File"), tr("&Edit"), tr("&Clip"), tr("&Playback"), tr("&View"), tr("&Help")};
    for (int i = 0; i < titles.size(); ++i)
        m_menus.at(i)->setTitle(titles.at(i));
    m_recentMenu->setTitle(tr("Open &Recent"));
    m_toolBar->setWindowTitle(tr("Tools"));
    m_toolBar->setAccessibleName(tr("Tools"));
    m_importCancel->setText(tr("Cancel"));
    m_importBar->setAccessibleName(tr("Import"));
    showTitle();
}

} // namespace zk::app
