// An AI erasing workspace with its view in a window of a host.
#pragma once

#include "ErasingWorkspace.h"

#include "erasing/ZkAIErasingCropOverlayWidget.h"
#include "erasing/ZkAIErasingOverlayWidget.h"
#include "erasing/ZkAIErasingPlayerView.h"
#include "erasing/ZkAIErasingSettingView.h"
#include "erasing/ZkAIErasingView.h"

#include <QVBoxLayout>

class SceneJournal : public ZkPresenter
{
public:
    bool dispatchMessage(ZkMessage *message) override
    {
        note("scene", message->id());
        return true;
    }
};

class ErasingView : public ErasingWorkspace, public ZkUIView
{
public:
    explicit ErasingView(int clipType = ZKTIMELINE::VideoClip)
    {
        controller->clip.clipType = clipType;
        setViewPresenter(&scene);
        host.resize(1200, 760);
        view = new ZkAIErasingView(erasing, this);
        (new QVBoxLayout(&host))->addWidget(view);
        host.show();
        if (!QTest::qWaitForWindowActive(&host)
            || !QTest::qWaitFor([this] { return rectangles()->isVisible(); }))
            qFatal("the workspace is not shown");
        QCoreApplication::processEvents();
        takeJournal();
    }
    ~ErasingView() override
    {
        presenter->clearView();
        delete view;
    }

    QWidget *widget() override { return &host; }
    template<typename Widget>
    Widget *find(const char *name = nullptr)
    {
        return view->findChild<Widget *>(QString::fromLatin1(name));
    }
    ZkAIErasingPlayerView *playerView() { return find<ZkAIErasingPlayerView>(); }
    ZkAIErasingCropOverlayWidget *rectangles() { return playerView()->cropOverlay(); }
    ZkMultiCropWidget *editor() { return rectangles()->editor(); }
    ZkAIErasingOverlayWidget *bar() { return playerView()->erasingOverlay(); }
    ZkAIErasingSettingView *tools() { return find<ZkAIErasingSettingView>(); }
    template<typename Button>
    Button *buttonWithText(const char *text)
    {
        for (Button *const button : view->findChildren<Button *>()) {
            if (button->text() == QLatin1String(text))
                return button;
        }
        qFatal("no such button");
    }
    void track(bool on)
    {
        service->mode = on ? ZKSMARTKEYING::TrackingMode : ZKSMARTKEYING::EditingMode;
        emit presenter->sigTrackingModeChanged(on);
    }

    // The offscreen platform says so of every window that stands above another.
    zk::test::ExpectedMessage offscreen {QStringLiteral("^This plugin does not support")};
    // At the level of warnings whenever the frame is somewhere else.
    zk::test::ExpectedMessage moved {QStringLiteral("sigCanvasRectChanged received")};
    SceneJournal scene;
    QWidget host;
    ZkAIErasingView *view;
};
