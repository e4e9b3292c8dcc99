// What a player shows of a tracking run.
#pragma once

#include "ZkGlobal.h"

namespace zk::datamodel {

// Implemented by the player's IZkMediaPlayer object; the edit controller finds it by dynamic_cast and
// does without when there is none. Every call comes on the GUI thread, in the order
//
//     trackingStarted  ( showTrackedFrame  trackingProgress )*  trackingFinished
//
// whether the run ends by itself or is stopped. The work mode of the segmentation service has changed
// before trackingStarted() and before trackingFinished() are called.
class ZK_INTERFACE PlayerFeedback
{
public:
    virtual ~PlayerFeedback() = default;
    // The player reports ZKPLAYER::TrackingState from now on.
    virtual void trackingStarted() = 0;
    // The frame of the edit timeline has a new mask: go there and show it.
    virtual void showTrackedFrame(qint64 frame) = 0;
    virtual void trackingProgress(int percent) = 0; // 0..100, never less than before
    // The player reports ZKPLAYER::PausedState from now on.
    virtual void trackingFinished() = 0;
};

} // namespace zk::datamodel
