// Tells object from background in one picture of working size. Not public.
#pragma once

#include "ZkFrameFeatures.h"
#include "ZkPixelNetwork.h"

#include <opencv2/core.hpp>

namespace zk::engine {

struct InteractiveSegmenterOptions;

// What is known before anything is computed; everything CV_8UC1 of working size.
struct StrokeTask
{
    cv::Mat keep;
    cv::Mat remove; // no pixel of keep
    cv::Mat previous; // the matte that the strokes correct, 0 .. 255; empty = none
};

// The pixels that are taken for one side: those the user vouches for, and those that are guessed.
struct Seeds
{
    cv::Mat sure;
    cv::Mat guessed;

    cv::Mat all() const { return sure | guessed; }
    cv::Mat weights(double guessedWeight) const;
};

struct SeedPair
{
    Seeds object;
    Seeds background;
};

// Refers to the features and the options, which must outlive it.
class StrokeSolver
{
public:
    StrokeSolver(const FrameFeatures &features, const InteractiveSegmenterOptions &options);

    // 0 or 255. Nothing that is connected neither to a keep stroke nor to the previous object.
    cv::Mat solve(const StrokeTask &task) const;

private:
    SeedPair seedsFromStrokes(const StrokeTask &task) const;
    SeedPair seedsFromPrevious(const StrokeTask &task) const;
    TrainingSet trainingSet(const SeedPair &seeds) const;
    cv::Mat networkLogits(const SeedPair &seeds) const;
    cv::Mat appearance(const SeedPair &seeds) const;
    cv::Mat nearness(const SeedPair &seeds) const;
    cv::Mat loyalty(const StrokeTask &task) const;

    const FrameFeatures &m_features;
    const InteractiveSegmenterOptions &m_options;
};

} // namespace zk::engine
