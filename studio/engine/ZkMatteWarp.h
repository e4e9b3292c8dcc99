// Moves a matte from one frame to the next along the motion of the object and of the background.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkMotion.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct MatteWarpOptions
{
    int rounds = 3; // of the search for where a pixel came from
    double consistency = 1.5; // pixels: vectors that do not lead back this closely are not trusted
    double photometric = 0.04; // change of the probability per unit of Lab difference
};

// All CV_32F of the working size.
struct WarpedMatte
{
    cv::Mat object; // probability of the object, 0 .. 1
    cv::Mat objectFlow; // CV_32FC2, on the later frame: from where a pixel came if it is object
};

// matte: CV_32FC1, 0 .. 1, of the earlier frame; earlierLab, laterLab: CV_8UC3.
//
// The two motions differ at the outline, where a flow field mixes them. So each is taken from its own
// side, continued past the outline, and where they disagree the colours decide.
ZKENGINE_EXPORT WarpedMatte warpMatte(const cv::Mat &matte,
                                      const MotionField &motion,
                                      const cv::Mat &earlierLab,
                                      const cv::Mat &laterLab,
                                      const MatteWarpOptions &options = {});

// Fills the field where weight (CV_32FC1, 0 .. 1) is low from where it is high, smoothly.
ZKENGINE_EXPORT cv::Mat continuedField(const cv::Mat &field, const cv::Mat &weight);

} // namespace zk::engine
