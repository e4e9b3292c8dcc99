// Whether a frame continues the one before it. Not public.
#pragma once

#include "ZkMotion.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct SceneCutOptions
{
    double likeness = 0.45; // two frames that are less alike
    double distance = 0.20; // and whose colours differ more than this do not belong together
};

// How two neighbouring frames compare.
struct Continuity
{
    // Share of the textured places that look the same where they went to, 0 .. 1.
    double likeness = 1.0;
    double distance = 0.0; // between the distributions of their colours, 0 .. 1
};

// lab: CV_8UC3 of the motion's size. A change of the light alone leaves the likeness as it is, fast motion
// the distribution of the colours; a cut leaves neither.
Continuity
continuityOf(const cv::Mat &earlierLab, const cv::Mat &laterLab, const MotionField &motion);

bool isSceneCut(const Continuity &continuity, const SceneCutOptions &options = {});

} // namespace zk::engine
