// The inside of a PreparedFrame. Not public.
#pragma once

#include "ZkFrameFeatures.h"
#include "ZkLabelTransfer.h"
#include "ZkMotion.h"

#include <opencv2/core.hpp>

#include <memory>

namespace zk::engine {

struct FrameData
{
    cv::Mat frame; // as it came: shares the caller's pixels
    cv::Mat motionImage; // for the motion to the frame after this one
    FrameFeatures features;
    Descriptors descriptors; // views of the features
    MotionField motion; // from the frame before; empty for the first one
    bool cut = false; // a hard cut parts this frame from the one before
    std::weak_ptr<const FrameData> previous; // the frame that these two were measured against
};

} // namespace zk::engine
