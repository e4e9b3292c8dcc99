#include "ZkQuality.h"

#include "ZkClip.h"

#include <ZkInteractiveSegmenter.h>
#include <ZkMatte.h>
#include <ZkObjectTracker.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <vector>

namespace zk::bench {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct TrackingRun
{
    std::vector<double> ious; // of the frames 1 .. n-1
    double seconds = 0.0;

    double mean(std::size_t first) const
    {
        if (ious.size() <= first + 1)
            return 0.0;
        double sum = 0.0;
        for (std::size_t i = first; i + 1 < ious.size(); ++i)
            sum += ious[i];
        return sum / double(ious.size() - 1 - first);
    }
};

// The pipeline of a player: while one thread advances, another prepares the frame after.
TrackingRun
track(Clip &clip, const cv::Mat &first, const cv::Mat &matte, const QualityOptions &options)
{
    TrackingRun run;
    engine::ObjectTracker tracker(options.tracker);
    if (!tracker.start(first, matte))
        return run;
    engine::PreparedFrame next = tracker.prepare(tracker.current(), clip.nextFrame());
    for (int frame = 1; !next.isEmpty(); ++frame) {
        const cv::Mat after = clip.nextFrame();
        const auto start = Clock::now();
        auto ahead = std::async(std::launch::async, [&] { return tracker.prepare(next, after); });
        const engine::TrackedFrame tracked = tracker.advance(next);
        next = ahead.get();
        run.seconds += secondsSince(start);
        run.ious.push_back(engine::intersectionOverUnion(tracked.matte, clip.mask(frame)));
    }
    return run;
}

} // namespace

ClipQuality
measureQuality(const std::string &folder, const std::string &name, const QualityOptions &options)
{
    ClipQuality quality;
    quality.name = name;
    Clip clip(folder + "/" + name, options.height);
    const cv::Mat first = clip.nextFrame();
    const cv::Mat truth = clip.mask(0);
    const auto start = Clock::now();
    const cv::Mat matte = engine::InteractiveSegmenter(options.segmenter)
                              .segment(first, {clip.strokes("keep"), clip.strokes("remove")});
    quality.strokeSeconds = secondsSince(start);
    quality.strokeIou = engine::intersectionOverUnion(matte, truth);

    const TrackingRun run = track(clip, first, truth, options);
    quality.jFromTruth = run.mean(0);
    quality.jAtEnd = run.mean(run.ious.size() * 3 / 4);
    quality.secondsPerFrame = run.seconds / double(std::max<std::size_t>(1, run.ious.size()));
    if (options.fromStrokes) {
        Clip again(folder + "/" + name, options.height);
        quality.jFromStrokes = track(again, again.nextFrame(), matte, options).mean(0);
    }
    return quality;
}

} // namespace zk::bench
