// What the object looks like: learnt from the frames that the user vouches for, kept up to date with
// the frames that were tracked.
#pragma once

#include "ZkColorModel.h"
#include "ZkEngineGlobal.h"
#include "ZkFrameFeatures.h"
#include "ZkPixelNetwork.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct AppearanceOptions
{
    PixelNetworkOptions network;
    ColorModelOptions color;

    int objectSamples = 2000; // of a frame that the user vouches for
    int nearSamples = 1500; // background around the object
    int farSamples = 1000; // background anywhere
    int nearReach = 24; // pixels of the working copy
    int gap = 1; // pixels on both sides of the outline that nobody learns from
    int truthEpochs = 12;
    int maximumTruths = 20000; // samples that are remembered; the oldest are thinned out beyond

    int adaptSamples = 500; // of each kind, of a tracked frame
    int replaySamples = 1000; // of the truths, with every update
    double adaptWeight = 0.5; // of a tracked sample against a true one
    double adaptRate = 0.3; // learning rate of an update against that of the first training
    double colorRate = 0.1; // share of the tracked frame in the colours
};

class ZKENGINE_EXPORT AppearanceModel
{
public:
    explicit AppearanceModel(const AppearanceOptions &options = {});

    // matte: CV_8UC1, 0 or 255, working size. It may be empty of object, but not the first one.
    void learnTruth(const FrameFeatures &features, const cv::Mat &matte);
    // matte as above; doubtful: CV_8UC1, non-zero where the matte may be wrong.
    void adapt(const FrameFeatures &features, const cv::Mat &matte, const cv::Mat &doubtful);

    // log odds of the object in an area, CV_32FC1, by the network and by the colours alone.
    cv::Mat networkLogits(const FrameFeatures &features, const cv::Rect &area) const;
    cv::Mat colorLogits(const FrameFeatures &features, const cv::Rect &area) const;

private:
    TrainingSet replay();
    void remember(const TrainingSet &set);

    AppearanceOptions m_options;
    PixelNetwork m_network;
    ColorModel m_color;
    TrainingSet m_truths;
    cv::RNG m_random;
};

} // namespace zk::engine
