// The inside of a PreparedFrame. Not public.
#pragma once

#include "ZkFrameFeatures.h"
#include "ZkLabelTransfer.h"
#include "ZkMotion.h"

#include <opencv2/core.hpp>

#include <memory>

namespace zk::engine {

struct TrackerOptions;

// Where the frame's pixels came from, and whether they came from there at all.
struct Transition
{
    MotionField motion;
    bool cut = false; // another shot begins
};

struct FrameData
{
    cv::Mat frame; // as it came: shares the caller's pixels
    cv::Mat motionImage; // for the motion to the frame after this one
    FrameFeatures features;
    Descriptors descriptors; // views of the features
    Transition transition; // from the frame before; without motion for the first one
    std::weak_ptr<const FrameData> previous; // the frame that it was measured against
};

Transition
measuredTransition(const FrameData &earlier, const FrameData &later, const TrackerOptions &options);

// What was measured against this very frame, or is now.
Transition transitionBetween(const std::shared_ptr<const FrameData> &earlier,
                             const FrameData &later,
                             const TrackerOptions &options);

} // namespace zk::engine
