// The bar under the player of a video; not public.
#pragma once

#include "ZkWidgets.h"

#include "ZkCore.h"

class ZkSmartKeyingPresenter;
class ZTimelinePresenter;

// Playback, the playhead's position and the scale of the timeline, with their shortcuts. Disabled
// while tracking. The presenter is not owned; without a timeline presenter the buttons and keys of the
// timeline do nothing.
class ZkSmartKeyingPlayerToolBar : public ZkPlayerToolBarBase, public ZkUIView
{
    Q_OBJECT

public:
    ZkSmartKeyingPlayerToolBar(ZkSmartKeyingPresenter *presenter, ZkUIView *parentView);
    ~ZkSmartKeyingPlayerToolBar() override;

    QWidget *widget() override { return this; }
    QString shortcutText(int id) const override;

protected:
    void durationChanged(int duration) override;
    void frameChanged(int frame) override;
    void updateToolTip() override;

private:
    void buildTimeEdit();
    void buildFitButton();
    void buildZoomSlider();
    void layOut();
    void connectSignals();
    void addShortcuts();
    void addTimelineShortcuts(QWidget *owner);
    void addPlaybackShortcuts(QWidget *owner);
    void followTracking(bool tracking);
    void fitTimeline();
    void removeSelectedNode();
    ZTimelinePresenter *timeline() const;

    ZkSmartKeyingPresenter *m_presenter;
    ZkTimeEditWidget *m_timeEdit = nullptr;
    ZkZoomSlider *m_zoomSlider = nullptr;
};
