// The view of one smart keying editing context.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "widgets/ZkRoundRadiusWidget.h"

class ZkSmartKeyingHeaderToolBar;
class ZkSmartKeyingMediaPlayerWidget;
class ZkSmartKeyingPresenter;
class ZkSmartKeyingProgressOverlayWidget;

// The panel that a host places in its editor while a clip is being cut out: tools, player and playback,
// with the progress of a segmentation over the player.
//
// Becomes the presenter's view; whoever owns the view calls the presenter's clearView() before deleting
// it. Parent view and presenter are not owned, and the presenter must outlive the view. Give the
// presenter its timeline presenter first. GUI thread only. Not to be deleted while a stroke is being
// segmented: an event loop runs inside.
class ZKSMARTKEYING_EXPORT ZkSmartKeyingPlayerView : public ZkRoundRadiusWidgetView
{
    Q_OBJECT

public:
    // Ends with the presenter's init() and, when there is something to edit, with opening it. Shows
    // empty tools without.
    ZkSmartKeyingPlayerView(ZkSmartKeyingPresenter *presenter, ZkUIView *parent);
    ~ZkSmartKeyingPlayerView() override;

    QWidget *widget() override;

    // The canvas; shows the arrow while it is disabled.
    void setDrawingEnabled(bool enabled);
    void setHeaderToolBarEnabled(bool enabled);
    void setToolBarEnabled(bool enabled);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void initUI();
    QWidget *createToolBar();
    void layOut();
    void roundCorners();
    void connectSlots();
    void showProgress(bool show);
    void updateProgress(int value); // percent
    void resetProgress();

    ZkSmartKeyingPresenter *m_presenter;
    ZkSmartKeyingMediaPlayerWidget *m_mediaPlayerWidget = nullptr;
    ZkSmartKeyingHeaderToolBar *m_headerToolBar = nullptr;
    QWidget *m_toolBar = nullptr; // empty for a still image
    ZkSmartKeyingProgressOverlayWidget *m_progressOverlay = nullptr;
};
