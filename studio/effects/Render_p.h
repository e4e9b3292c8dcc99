// Not public: the renderer on plain pictures, with the scale of lengths given.
#pragma once

#include "ZkLook.h"

#include <opencv2/core.hpp>

namespace zk::effects {

// The height of the frame that lengths in looks are meant for.
constexpr double referenceHeight = 1080;

struct RenderJob
{
    cv::Mat frame; // CV_8UC4, straight alpha
    cv::Mat matte; // CV_8UC1, of the frame's size
    double scale = 1;
    double time = 0; // seconds
};

// result: CV_8UC4 of the frame's size; every pixel is written.
void renderInto(const RenderJob &job, const Look &look, cv::Mat &result);

} // namespace zk::effects
