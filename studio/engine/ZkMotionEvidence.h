// Whether a pixel moves with the object or with what is behind it.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkMatteWarp.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct MotionEvidenceOptions
{
    int gap = 6; // pixels around the object whose measured motion it may have spoilt
    double noise = 1.0; // pixels, of the measured motion
    double consistency = 1.5; // pixels: motion that does not lead back this closely says little
};

// CV_32FC1 of the size of the area, -1 .. 1: positive where the measured motion is rather that of the
// object, continued past its outline, than that of the background, one plane's motion over the whole
// picture. About 0 where both move alike, where the measurement contradicts itself, and when too little of
// the background is seen.
ZKENGINE_EXPORT cv::Mat motionEvidence(const MotionField &motion,
                                       const WarpedMatte &warped,
                                       const cv::Rect &area,
                                       const MotionEvidenceOptions &options = {});

} // namespace zk::engine
