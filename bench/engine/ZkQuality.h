// Measures how well the engine does on clips whose true masks are known.
#pragma once

#include <ZkInteractiveSegmenterOptions.h>
#include <ZkTrackerOptions.h>

#include <string>

namespace zk::bench {

struct QualityOptions
{
    int height = 0; // of the frames, in pixels; 0 = as they are stored
    bool fromStrokes = true;
    engine::InteractiveSegmenterOptions segmenter;
    engine::TrackerOptions tracker;
};

// Tracking quality J is the mean intersection over union of the frames 1 .. n-2: the first one is
// given, and the last one is left out by convention.
struct ClipQuality
{
    std::string name;
    double strokeIou = 0.0;
    double strokeSeconds = 0.0;
    double jFromTruth = 0.0;
    double jAtEnd = 0.0; // from truth, mean of the last quarter of the frames
    double jFromStrokes = 0.0;
    double secondsPerFrame = 0.0; // tracking, decoding left out
};

ClipQuality
measureQuality(const std::string &folder, const std::string &name, const QualityOptions &options);

} // namespace zk::bench
