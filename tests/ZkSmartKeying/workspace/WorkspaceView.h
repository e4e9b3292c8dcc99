// A workspace with its view in a window of a host, which notes what reaches its scene and its timeline.
#pragma once

#include "Workspace.h"

#include "workspace/ZkSmartKeyingDrawingWidget.h"
#include "workspace/ZkSmartKeyingHeaderToolBar.h"
#include "workspace/ZkSmartKeyingMediaPlayerWidget.h"
#include "workspace/ZkSmartKeyingPlayerToolBar.h"
#include "workspace/ZkSmartKeyingPlayerView.h"
#include "workspace/ZkSmartKeyingProgressOverlayWidget.h"

#include "ZkTimelineView.h"

#include <QVBoxLayout>

class TimelineJournal : public ZTimelinePresenter
{
public:
    void fitTimeline() override { note("timeline.fit"); }
    void setZoomSlider(ZkZoomSlider *shown) override { slider = shown; }
    void removeSelectedSmartKeyingNode() override { note("timeline.removeNode"); }
    bool dispatchMessage(ZkMessage *message) override
    {
        note("scene", message->id());
        return true;
    }
    ZkZoomSlider *slider = nullptr;
};

class WorkspaceView : public Workspace, public ZkUIView
{
public:
    explicit WorkspaceView(
        ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout,
        int clipType = ZKTIMELINE::VideoClip)
        : Workspace(type)
    {
        controller->clip.clipType = clipType;
        presenter->setTimelinePresenter(&timeline);
        setViewPresenter(&timeline);
        host.resize(1000, 600);
        view = new ZkSmartKeyingPlayerView(presenter.get(), this);
        (new QVBoxLayout(&host))->addWidget(view);
        host.show();
        if (!QTest::qWaitForWindowActive(&host)
            || !QTest::qWaitFor([this] { return canvas()->isVisible(); }))
            qFatal("the canvas is not shown");
    }
    ~WorkspaceView() override { presenter->clearView(); }

    QWidget *widget() override { return &host; }
    template<typename Widget>
    Widget *find(const char *name = nullptr)
    {
        return view->findChild<Widget *>(QString::fromLatin1(name));
    }
    ZkSmartKeyingDrawingWidget *canvas() { return find<ZkSmartKeyingDrawingWidget>(); }
    ZkSmartKeyingMediaPlayerWidget *surface() { return find<ZkSmartKeyingMediaPlayerWidget>(); }
    ZkSmartKeyingHeaderToolBar *header() { return find<ZkSmartKeyingHeaderToolBar>(); }
    ZkSmartKeyingPlayerToolBar *bar() { return find<ZkSmartKeyingPlayerToolBar>(); }
    void track(bool on)
    {
        controller->clip.cutout.mode =
            on ? ZKSMARTKEYING::TrackingMode : ZKSMARTKEYING::EditingMode;
        emit presenter->sigTrackingModeChanged(on);
    }

    // The offscreen platform says so of every window that stands above another.
    zk::test::ExpectedMessage offscreen {QStringLiteral("^This plugin does not support")};
    TimelineJournal timeline;
    QWidget host;
    ZkSmartKeyingPlayerView *view;
};
