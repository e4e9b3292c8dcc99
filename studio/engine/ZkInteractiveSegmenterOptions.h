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
    GeodesicOptions geodesic;
    PixelNetworkOptions network;
    GraphCutOptions cut;
    MatteRefinerOptions refiner;

    // Weights of the evidence; the cut's smoothness is the price of one pixel of outline in that sum.
    double colorWeight = 1.0;
    double geodesicWeight = 4.0;
    double networkWeight = 1.0;
    double previousWeight = 4.0;

    int epochs = 6;
    int strokeSamples = 1500;     // of each kind, at most
    int guessedSamples = 1500;    // background that nobody painted, at most
    double guessedWeight = 0.5;   // of a guessed sample against a painted one
    double farShare = 0.35;       // share of the picture, farthest from the strokes, that is guessed background
};

} // namespace zk::engine
