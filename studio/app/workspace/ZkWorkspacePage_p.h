// The inside of the page; not public.
#pragma once

#include "ZkPageQuestions.h"
#include "ZkWorkspaceBar.h"
#include "ZkWorkspacePage.h"

#include <QCoreApplication>
#include <QPointer>

class QSplitter;
class ZkSmartKeyingPlayerView;
class ZkStudioTimelinePresenter;
class ZkStudioTimelineView;

namespace zk::app {

class InputShield;
class PropertyPanel;
class WorkspaceScene;

class WorkspacePage::Private
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::WorkspacePage)

public:
    Private(WorkspacePage *page, ZkStudioClip *clip, ZkStudioProjectManager *manager);
    ~Private();

    void build();
    void refuseToOpen();

    bool isTracking() const;
    bool isSegmenting() const { return strokes > 0; }
    bool isBusy() const;
    void takeFocus();
    void refresh();

    void run(WorkspaceBar::Command command);
    void track(WorkspaceBar::Command command);
    void stop();
    void askToReset();
    void commitEditors();

    void apply();
    void onSaveFinished(bool isSaved);
    void onSaveCancelled();

    bool hasWorkToLose() const;
    void askToClose();
    // Runs until nothing is left that another call is inside of, and then takes the page apart.
    void close();
    void closeWhenPossible();
    void takeApart();

    WorkspacePage *const q;
    ZkStudioClip *const clip;
    ZkStudioProjectManager *const manager;
    const std::unique_ptr<WorkspaceScene> scene;
    std::unique_ptr<ZkSmartKeyingPresenter> presenter; // null: not open
    std::unique_ptr<ZkStudioTimelinePresenter> timelinePresenter; // null for a still picture

    WorkspaceBar *bar = nullptr;
    QSplitter *columns = nullptr;
    QSplitter *rows = nullptr;
    QPointer<ZkSmartKeyingPlayerView> view;
    QPointer<ZkStudioTimelineView> timelineView;
    QPointer<PropertyPanel> panel;
    InputShield *shield = nullptr; // over the panel, while a stroke is worked on
    PageQuestions questions;

    QByteArray layout; // when it was taken apart
    int strokes = 0; // that were finished and wait for their mask
    bool isSaving = false;
    bool isClosing = false;
    bool isClosed = false;
    bool isApplied = false;
    bool closesAfterSaving = false; // the user has chosen that when he was asked
    bool wasBusy = false;

private:
    void buildPlayer();
    void buildColumns();
    void addShortcuts();
    void connectPresenter();
    void connectView();
};

} // namespace zk::app
