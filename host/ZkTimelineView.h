// Host timeline view: thumbnails, ruler and playhead of one timeline.
#pragma once

#include "ZkCore.h"

class ZkZoomSlider;

// Presenter of a timeline on screen. GUI thread only.
class ZTimelinePresenter : public ZkPresenter
{
public:
    using ZkPresenter::ZkPresenter;

    // Shows the whole timeline in the width that there is.
    virtual void fitTimeline() = 0;
    // The slider shows and sets the scale from now on. Not owned; it may die first. Null: none.
    virtual void setZoomSlider(ZkZoomSlider *slider) = 0;
    // Removes the selected segment nodes with their masks, as one undoable step. Does nothing without
    // a selection or while tracking.
    virtual void removeSelectedSmartKeyingNode() = 0;
};
