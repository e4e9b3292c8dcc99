// Measures how well the engine does on clips whose true masks are known.
#pragma once

#include <ZkInteractiveSegmenterOptions.h>
#include <ZkTrackerOptions.h>

#include <string>

namespace zk::bench {

class DrawnFootage;

struct QualityOptions
{
    int height = 0; // of the frames, in pixels; 0 = as they are stored
    engine::InteractiveSegmenterOptions segmenter;
    engine::TrackerOptions tracker;
};

// All is the intersection over union with the truth of frame 0. The strokes of a user who corrects are
// simulated: each runs along the middle of the largest error.
struct StrokeQuality
{
    double first = 0.0; // by the clip's stroke
    double corrected = 0.0; // after three corrections more
    double seconds = 0.0; // first
    double cut = 0.0; // by cv::grabCut on the full frame
    double cutSeconds = 0.0;
};

// J is the mean intersection over union of the frames 1 .. n-2: the first one is given, and the last one
// is left out by convention.
struct TrackingQuality
{
    double forward = 0.0; // from the truth of frame 0
    double atEnd = 0.0; // of that, the last quarter of the frames
    double bothWays = 0.0; // from the truth of the middle frame
    double fromStrokes = 0.0; // from the clip's stroke
    double corrected = 0.0; // after one correction on the worst frame of that
    double confidence = 0.0; // rank correlation of the tracker's confidence with each frame's own J
    double secondsPerFrame = 0.0; // forward, decoding left out
    double warped = 0.0; // frame 0's truth moved along the optical flow
    double warpedSeconds = 0.0;
};

StrokeQuality measureStrokes(const std::string &clip, const QualityOptions &options);
TrackingQuality measureTracking(const std::string &clip, const QualityOptions &options);
// Only the forward run.
TrackingQuality measureForward(const std::string &clip, const QualityOptions &options);

TrackingQuality measureDrawn(const DrawnFootage &drawn, const QualityOptions &options);

} // namespace zk::bench
