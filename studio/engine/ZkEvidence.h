// The opinions about one frame, and the one logit per pixel that they are summed up to.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkLabelTransfer.h"
#include "ZkMatteWarp.h"
#include "ZkMotionEvidence.h"

#include <opencv2/core.hpp>

namespace zk::engine {

class AppearanceModel;
struct FrameData;

struct EvidenceOptions
{
    MatteWarpOptions warp;
    LabelTransferOptions nearTransfer {12, 2, 1, 40.0};
    LabelTransferOptions wideTransfer {24, 4, 2, 40.0};
    MotionEvidenceOptions motion;

    // Weights of the opinions in the sum.
    double networkWeight = 0.70;
    double nearWeight = 1.6;
    double wideWeight = 1.8;
    double warpWeight = 0.9;
    double distanceWeight = 0.5;
    double motionWeight = 2.0;
    double colorWeight = 0.10;
    double bias = 0.0;
    // Pixels at which the distance to the warped outline says all it can.
    double distanceScale = 12.0;
    int smallestMargin = 24; // pixels of the working copy around the warped object
    double margin = 0.25; // the same as a share of the object's size
};

// All CV_32FC1 of the size of the area. Network and colour are logits, the others -1 .. 1; positive =
// object.
struct Evidence
{
    cv::Rect area; // of the working copy; outside it there is no object
    cv::Mat network;
    cv::Mat nearLabels;
    cv::Mat wideLabels;
    cv::Mat warp;
    cv::Mat distance;
    cv::Mat motion;
    cv::Mat color;
};

// matte: CV_32FC1, 0 .. 1, of the earlier frame, with some object in it.
ZKENGINE_EXPORT Evidence gatherEvidence(const FrameData &earlier,
                                        const cv::Mat &matte,
                                        const FrameData &later,
                                        const MotionField &motion,
                                        const AppearanceModel &appearance,
                                        const EvidenceOptions &options = {});

// log odds of the object, CV_32FC1 of the size of the area.
ZKENGINE_EXPORT cv::Mat weighedUp(const Evidence &evidence, const EvidenceOptions &options = {});

} // namespace zk::engine
