// The cheapest outline: one minimum cut on the grid of pixels.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct GraphCutOptions
{
    // Price of an outline between two equal neighbours, in units of a logit.
    double smoothness = 4.0;
    double contrast = 1.0; // how fast the price falls with the difference of the two colours
};

// A logit that no neighbourhood can outvote.
constexpr float certainLogit = 1000.0f;

// logits: CV_32FC1, positive = object. lab: CV_8UC3 of the same size. Returns a CV_8UC1 matte of 0
// and 255 that minimises the sum of the |logits| it goes against and of the prices of its outline.
ZKENGINE_EXPORT cv::Mat
cutGraph(const cv::Mat &logits, const cv::Mat &lab, const GraphCutOptions &options = {});

} // namespace zk::engine
