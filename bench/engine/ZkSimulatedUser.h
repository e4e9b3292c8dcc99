// A user who sees what is wrong and paints over it.
#pragma once

#include <opencv2/core.hpp>

namespace zk::bench {

struct Correction
{
    cv::Mat stroke; // CV_8UC1 at the size of the matte, 255 = painted; empty when nothing is wrong
    bool isKeep = false;
};

// One stroke along the middle of the largest connected error, within it. matte: CV_8UC1, object from
// 128; truth: 0 or 255.
Correction correctionOf(const cv::Mat &matte, const cv::Mat &truth);

} // namespace zk::bench
