// Smooth filling: the membrane that is spanned by known values. Not public.
#pragma once

#include <opencv2/core.hpp>

namespace zk::engine {

enum DiffusionState : uchar {
    DiffusionOutside = 0, // takes no part
    DiffusionUnknown = 1, // is computed
    DiffusionKnown = 2, // holds its value
};

// values: CV_32FC1, CV_32FC2 or CV_32FC3; state: CV_8UC1 of the same size. Each unknown value becomes
// (nearly) the mean of its four neighbours that take part. Where no known value is connected: zero.
void diffuse(cv::Mat *values, const cv::Mat &state);

// The picture (CV_8UC3) with the masked pixels filled smoothly from those around them.
void fillSmoothly(cv::Mat *picture, const cv::Mat &mask);

} // namespace zk::engine
