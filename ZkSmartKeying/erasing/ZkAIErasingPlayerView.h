// The player area of an AI erasing workspace; not public.
#pragma once

#include "widgets/ZkRoundRadiusWidget.h"

class ZkAIErasingCropOverlayWidget;
class ZkAIErasingHeaderToolBar;
class ZkAIErasingMediaPlayerWidget;
class ZkAIErasingOverlayWidget;
class ZkAIErasingPlayerToolBar;
class ZkAIErasingPresenter;

// Tools, player and playback, with what floats over the player. From the bottom: the rectangles, the
// canvas of the brush, the bar. The presenter is not owned.
class ZkAIErasingPlayerView : public ZkRoundRadiusWidgetView
{
    Q_OBJECT

public:
    ZkAIErasingPlayerView(ZkAIErasingPresenter *presenter, ZkUIView *parent);
    ~ZkAIErasingPlayerView() override;

    ZkAIErasingCropOverlayWidget *cropOverlay() const { return m_cropOverlay; }
    ZkAIErasingOverlayWidget *erasingOverlay() const { return m_erasingOverlay; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void roundCorners();
    void connectPresenter();
    QWidget *canvas() const; // of the brush
    void restack();
    void followEditMode();
    void connectBar();
    bool hasNodes() const;
    void offerPreview(); // as far as there is something to track
    void followSelection();
    void followRefusal();
    void followNodeChange();

    ZkAIErasingPresenter *m_presenter;
    ZkAIErasingMediaPlayerWidget *m_mediaPlayerWidget = nullptr;
    ZkAIErasingHeaderToolBar *m_headerToolBar = nullptr;
    ZkAIErasingPlayerToolBar *m_playerToolBar = nullptr;
    ZkAIErasingCropOverlayWidget *m_cropOverlay = nullptr;
    ZkAIErasingOverlayWidget *m_erasingOverlay = nullptr;
};
