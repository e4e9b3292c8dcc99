// Asks the pixels of the frame before that look alike whether they were object.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkFrameFeatures.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct LabelTransferOptions
{
    int radius = 12; // of the search, in pixels of the working copy
    int step = 2; // between two places that are looked at; a multiple of the grid
    // One of this many pixels in both directions asks and is asked; the others lie between.
    int grid = 2;
    double tolerance = 40.0; // sum of absolute differences at which a place has little to say
};

// The descriptors of a frame, ready for any number of transfers.
struct Descriptors
{
    static constexpr int channels = 8;

    cv::Mat planes[channels]; // CV_8UC1, working size
};

ZKENGINE_EXPORT Descriptors describe(const FrameFeatures &features);

// matte: CV_32FC1, 0 .. 1, of the earlier frame. shift: where the middle of the search lies, in pixels:
// the pixel (x, y) of the later frame is looked for around (x, y) + shift. Returns the weighted share of
// object among the similar pixels, CV_32FC1 of the size of area (inside the working copy).
ZKENGINE_EXPORT cv::Mat transferLabels(const Descriptors &earlier,
                                       const cv::Mat &matte,
                                       const Descriptors &later,
                                       const cv::Rect &area,
                                       const cv::Point &shift,
                                       const LabelTransferOptions &options = {});

} // namespace zk::engine
