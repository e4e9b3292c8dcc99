// What can be set about the stages of the object tracker.
#pragma once

#include "ZkAppearanceModel.h"
#include "ZkEvidence.h"
#include "ZkFrameFeatures.h"
#include "ZkGraphCut.h"
#include "ZkMatteRefiner.h"
#include "ZkMotion.h"
#include "ZkSceneCut.h"

namespace zk::engine {

struct TrackerOptions
{
    FeatureOptions features;
    MotionOptions motion;
    SceneCutOptions sceneCut;
    AppearanceOptions appearance;
    EvidenceOptions evidence;
    GraphCutOptions cut {1.5, 1.0};
    MatteRefinerOptions refiner;

    int adaptEvery = 2; // frames between two updates of the appearance
    double lostShare = 0.25; // of the usual area: below it the object is searched for
    double searchGrowth = 0.15; // growth of the searched box per frame, share of its size
    double foundShare = 0.15; // of the usual area: smaller finds are not believed
    double foundLogit = 2.0; // mean logit of the network over a find that is believed
    // A part away from the rest is believed to have come back when it has this share of the usual area, the
    // network gives it this mean logit, and with it the object has at most largestArea of the usual area.
    double returnedShare = 0.01;
    double returnedLogit = 3.0;
    double largestArea = 1.1;
};

} // namespace zk::engine
