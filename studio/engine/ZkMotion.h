// Where the pixels of a frame went: optical flow between two neighbouring frames.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct MotionOptions
{
    int pixels =
        854 * 480; // area at which the flow is measured; smaller frames are taken as they are
    bool spatialPropagation = true;
};

// Both fields are CV_32FC2 (x, y) of the working size, in pixels of the working copy.
struct MotionField
{
    cv::Mat forward; // on the earlier frame's grid: where its pixels go
    cv::Mat backward; // on the later frame's grid: where its pixels come from

    bool isEmpty() const { return forward.empty(); }
};

// The brightness of a frame at the size that measureMotion() wants, CV_8UC1.
ZKENGINE_EXPORT cv::Mat motionImage(const cv::Mat &frame, const MotionOptions &options = {});

// Where the pixels of one motion image are in another of the same size: CV_32FC2 (x, y), in pixels of them.
// Images of less than a few pixels do not move.
ZKENGINE_EXPORT cv::Mat
motionBetween(const cv::Mat &from, const cv::Mat &to, const MotionOptions &options = {});

// earlier and later: motion images of one size. Frames of less than a few pixels do not move.
ZKENGINE_EXPORT MotionField measureMotion(const cv::Mat &earlier,
                                          const cv::Mat &later,
                                          const cv::Size &workingSize,
                                          const MotionOptions &options = {});

} // namespace zk::engine
