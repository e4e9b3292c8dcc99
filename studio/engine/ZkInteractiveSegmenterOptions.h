// What can be set about the stages of the interactive segmenter.
#pragma once

#include "ZkColorModel.h"
#include "ZkFrameFeatures.h"
#include "ZkGeodesicDistance.h"
#include "ZkGraphCut.h"
#include "ZkMatteRefiner.h"
#include "ZkPixelNetwork.h"

namespace zk::engine {

struct InteractiveSegmenterOptions
{
    FeatureOptions features;
    ColorModelOptions color;
    GeodesicOptions geodesic {0.05, 2};
    PixelNetworkOptions network {32, 16, 32, 2e-3, 1e-3, 5.0, 0x5eed};
    GraphCutOptions cut {30.0, 1.0};
    MatteRefinerOptions refiner;

    // Weights of the evidence; the cut's smoothness is the price of one pixel of outline in that sum.
    double colorWeight = 1.0;
    double geodesicWeight = 4.0;
    double networkWeight = 1.0;
    double previousWeight = 1.0;

    // Rounds of learning. After the first one the background is what lies outside the object that was
    // found, which is more of it, and nearer, than could be guessed from the strokes.
    int passes = 2;
    int gap = 5; // pixels of the working copy around the found object that nobody learns from
    int outerGap = 6; // the same around an object that is corrected

    int networks = 2; // whose mean counts
    int epochs = 4;
    // A smaller object is looked at again by itself, with this share of its longer side around it.
    double surroundings = 0.8;
    int leastSurroundings = 24; // pixels of the frame
    double largeShare = 0.6; // of the frame: what takes more is not looked at again

    int strokeSamples = 1500; // of each kind, at most
    int guessedSamples = 1500; // of each kind that nobody painted, at most
    double guessedWeight = 0.25; // of a guessed sample against a painted one
    double farShare = 0.35; // of the picture, farthest from the strokes: guessed to be background
    // Geodesic pixels around a correcting stroke in which it is believed.
    double correctionReach = 100.0;
};

} // namespace zk::engine
