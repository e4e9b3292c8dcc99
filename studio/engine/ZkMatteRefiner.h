// Brings a coarse matte to the size of its frame and lays its outline on the edges of the picture.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct MatteRefinerOptions
{
    int radius = 3; // of the guided filter, in pixels of the coarse matte
    // Of the guided filter, for intensities of 0 .. 1: below it edges are noise.
    double epsilon = 2e-4;
    // Slope of the alpha around its middle: 1 keeps the filter's own softness.
    double contrast = 1.6;
};

// frame: R, G, B(, A). coarse: CV_8UC1 or CV_32FC1 (0 .. 1) of any size not larger than the frame.
// Returns a CV_8UC1 matte of the frame's size with a soft outline; where the coarse matte has no
// outline nearby the result is exactly 0 or 255. Returns an empty Mat when an argument does not fit.
// Pure; may be called from any thread.
ZKENGINE_EXPORT cv::Mat
refineMatte(const cv::Mat &frame, const cv::Mat &coarse, const MatteRefinerOptions &options = {});

} // namespace zk::engine
