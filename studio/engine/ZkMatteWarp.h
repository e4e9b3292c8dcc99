// Moves a matte from one frame to the next along the motion of the object.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkMotion.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct MatteWarpOptions
{
    int rounds = 3; // of the search for where a pixel came from
    double consistency = 1.5; // pixels: vectors that do not lead back this closely are not trusted
};

// All CV_32F of the working size.
struct WarpedMatte
{
    cv::Mat object; // probability of the object, 0 .. 1
    cv::Mat objectFlow; // CV_32FC2, on the later frame: from where a pixel came if it is object
};

// matte: CV_32FC1, 0 .. 1, of the earlier frame.
//
// At the outline a flow field mixes the motion of the object with that of the background. So the object's
// motion is taken from its inside only, where going forth and back agrees, and continued past the outline.
ZKENGINE_EXPORT WarpedMatte warpMatte(const cv::Mat &matte,
                                      const MotionField &motion,
                                      const MatteWarpOptions &options = {});

// For the pixels of the area: 1 where following the flow and then the other way back ends nearby, falling to
// 0 as it ends further off. CV_32FC1 of the size of the area.
cv::Mat
flowTrust(const cv::Mat &flow, const cv::Mat &back, const cv::Rect &area, double consistency);

// Fills the field where weight (CV_32FC1, 0 .. 1) is low from where it is high, smoothly.
ZKENGINE_EXPORT cv::Mat continuedField(const cv::Mat &field, const cv::Mat &weight);

} // namespace zk::engine
