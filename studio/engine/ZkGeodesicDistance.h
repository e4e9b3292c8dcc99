// Distances that grow slowly inside even areas and fast across edges.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct GeodesicOptions
{
    double edgeWeight = 0.25; // length added per unit of Lab difference between neighbours
    int rounds = 2; // of sweeps over the picture; every round follows one more bend
};

// Length of the cheapest path from each pixel to the nearest seed, CV_32FC1, in pixels; seeds: CV_8UC1,
// non-zero = seed, and at least one, or everything is unreachable (a distance of 1e6).
ZKENGINE_EXPORT cv::Mat
geodesicDistance(const cv::Mat &lab, const cv::Mat &seeds, const GeodesicOptions &options = {});

} // namespace zk::engine
