// From a box that the user drew around an object to the matte of the object.
#pragma once

#include "ZkColorModel.h"
#include "ZkEngineGlobal.h"
#include "ZkForeignMotion.h"
#include "ZkFrameFeatures.h"
#include "ZkGeodesicDistance.h"
#include "ZkGraphCut.h"
#include "ZkMatteRefiner.h"
#include "ZkPixelNetwork.h"

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

struct BoxSegmenterOptions
{
    FeatureOptions features {200 * 200}; // of the box with its surroundings
    ColorModelOptions color;
    GeodesicOptions geodesic {0.25, 2};
    PixelNetworkOptions network {32, 16, 32, 2e-3, 1e-3, 5.0, 0x5eed};
    GraphCutOptions cut {20.0, 1.0};
    MatteRefinerOptions refiner;
    ForeignMotionOptions motion;

    // Weights of the evidence, as in InteractiveSegmenterOptions.
    double colorWeight = 2.0;
    double networkWeight = 1.0;

    // Of the box's size, on every side: what the background is learnt from.
    double surroundings = 0.4;
    int leastSurroundings = 12; // pixels of the frame
    // The first guess: these shares of the box, which differ most and least from the surroundings.
    double objectGuess = 0.25;
    double backgroundGuess = 0.2;
    double rarity = 0.4; // what a colour's rarity counts beside the length of the way out
    double centre = 0.5; // and the distance from the centre of the box, squared
    double motionGuess = 0.5; // and the logit of a motion of its own
    // The logit of the centre of the box; it falls with the square of the distance to 0 on the ellipse that
    // fits into the box, and below further out. It brings parts of an object that look like what surrounds
    // it, at the cost of some background between its limbs: when something is erased, too much is better
    // than too little.
    double middle = 1.75;
    int passes = 4; // rounds of learning from what the round before found
    int epochs = 4; // in each of them
    int samples = 1200; // of either side, at most
    int gap = 2; // pixels of the working copy around the found object that nobody learns from

    bool onlyLargest = false; // of several parts
    double leastPart = 0.03; // of the largest part; smaller ones are dropped
    // A share of the box less or more than this is no object that stands out.
    double leastShare = 0.05;
    double largestShare = 0.97;
};

// The matte of the object in the box, CV_8UC1 of the frame's size, 0 outside the box. The box is in
// pixels of the frame; what reaches over its border does not count. Where no object can be told from
// what surrounds the box, the box itself is the matte. Empty when the frame is none or nothing of the
// box lies in it. neighbours: frames a little earlier and later, of the same size and type, which tell what
// moves by itself; others are not looked at. Pure; may be called from any thread.
ZKENGINE_EXPORT cv::Mat segmentBox(const cv::Mat &frame,
                                   const cv::Rect &box,
                                   const BoxSegmenterOptions &options = {},
                                   const std::vector<cv::Mat> &neighbours = {});

} // namespace zk::engine
