// The inside of the page; not public.
#pragma once

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

class WorkspacePage::Private
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::WorkspacePage)

public:
    Private(WorkspacePage *page, ZkStudioClip *clip, ZkStudioProjectManager *manager);
    ~Private();

    QString fileName() const;
    void build();
    void takeFocus();
    void showState();

    void run(WorkspaceBar::Command command);
    void track(WorkspaceBar::Command command);
    void stop();
    void askToReset();

    void apply();
    void onSaveFinished(bool isSaved);
    void onSaveCancelled();

    WorkspacePage *const q;
    ZkStudioClip *const clip;
    ZkStudioProjectManager *const manager;
    std::unique_ptr<ZkSmartKeyingPresenter> presenter; // null: not open
    std::unique_ptr<ZkStudioTimelinePresenter> timelinePresenter; // null for a still picture

    WorkspaceBar *bar = nullptr;
    QSplitter *columns = nullptr;
    QSplitter *rows = nullptr;
    QPointer<ZkSmartKeyingPlayerView> view;
    QPointer<ZkStudioTimelineView> timelineView;
    QPointer<PropertyPanel> panel;
    InputShield *shield = nullptr; // over the panel, while a stroke is worked on

    QByteArray layout; // when it was taken apart
    bool isSaving = false;
    bool closesAfterSaving = false; // the user has chosen that when he was asked

private:
    void buildPlayer();
    void buildColumns();
    void addShortcuts();
    void connectPresenter();
    void connectView();
};

} // namespace zk::app
