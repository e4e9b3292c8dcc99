#include "ZkQuality.h"

#include "ZkClip.h"
#include "ZkDrawnFootage.h"
#include "ZkRankCorrelation.h"
#include "ZkSimulatedUser.h"

#include <ZkInteractiveSegmenter.h>
#include <ZkMatte.h>
#include <ZkMotion.h>
#include <ZkObjectTracker.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <chrono>
#include <future>
#include <map>
#include <vector>

namespace zk::bench {

namespace {

using Clock = std::chrono::steady_clock;
using Mattes = std::vector<cv::Mat>;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Footage
{
    Footage(const std::string &folder, int height)
    {
        Clip clip(folder, height);
        for (cv::Mat frame = clip.nextFrame(); !frame.empty(); frame = clip.nextFrame()) {
            truths.push_back(clip.mask(int(frames.size())));
            frames.push_back(frame);
        }
        scribbles = {clip.strokes("keep"), clip.strokes("remove")};
    }
    explicit Footage(const DrawnFootage &drawn)
    {
        for (int i = 0; i < drawn.count; ++i) {
            frames.push_back(drawn.frame(i));
            truths.push_back(drawn.mask(i));
        }
    }
    int count() const { return int(frames.size()); }
    // As the editor gives them to the segmenter.
    std::vector<cv::Mat> around(int frame) const
    {
        std::vector<cv::Mat> result;
        for (const int other : {frame - 1, frame + 1}) {
            if (other >= 0 && other < count())
                result.push_back(frames[std::size_t(other)]);
        }
        return result;
    }
    double quality(const Mattes &mattes, int frame) const
    {
        return engine::intersectionOverUnion(mattes[frame], truths[frame]);
    }
    double mean(const Mattes &mattes, int first, int end) const
    {
        double sum = 0.0;
        for (int i = first; i < end; ++i)
            sum += quality(mattes, i);
        return sum / std::max(1, end - first);
    }
    double mean(const Mattes &mattes) const { return mean(mattes, 1, count() - 1); }

    std::vector<cv::Mat> frames;
    std::vector<cv::Mat> truths;
    engine::Scribbles scribbles;
};

// What a user has said about frames.
using Nodes = std::map<int, cv::Mat>;

void keep(const engine::TrackedFrame &tracked,
          int frame,
          Mattes *mattes,
          std::vector<double> *confidences)
{
    (*mattes)[frame] = tracked.matte;
    if (confidences)
        (*confidences)[frame] = tracked.confidence;
}

// From the node at first to last, over the nodes between. The pipeline of a player: while one thread
// advances, another prepares the frame after.
void track(const Footage &footage,
           const Nodes &nodes,
           int first,
           int last,
           const engine::TrackerOptions &options,
           Mattes *mattes,
           std::vector<double> *confidences = nullptr)
{
    engine::ObjectTracker tracker(options);
    const int step = last > first ? 1 : -1;
    (*mattes)[first] = nodes.at(first);
    if (first == last || !tracker.start(footage.frames[first], nodes.at(first)))
        return;
    engine::PreparedFrame next = tracker.prepare(tracker.current(), footage.frames[first + step]);
    for (int frame = first + step;; frame += step) {
        auto ahead = std::async(std::launch::async, [&] {
            return frame == last ? engine::PreparedFrame()
                                 : tracker.prepare(next, footage.frames[frame + step]);
        });
        const auto node = nodes.find(frame);
        if (node != nodes.end() && tracker.correct(next, node->second))
            (*mattes)[frame] = node->second;
        else
            keep(tracker.advance(next), frame, mattes, confidences);
        next = ahead.get();
        if (frame == last)
            break;
    }
}

Mattes emptyMattes(const Footage &footage)
{
    return Mattes(footage.frames.size(), cv::Mat::zeros(footage.frames[0].size(), CV_8U));
}

double warpedQuality(const Footage &footage)
{
    cv::Mat matte = footage.truths[0];
    Mattes mattes = emptyMattes(footage);
    cv::Mat earlier = engine::motionImage(footage.frames[0]);
    for (int i = 1; i < footage.count(); ++i) {
        const cv::Mat later = engine::motionImage(footage.frames[i]);
        const cv::Mat flow = engine::measureMotion(earlier, later, later.size()).backward;
        cv::Mat map(flow.size(), CV_32FC2);
        for (int y = 0; y < map.rows; ++y) {
            for (int x = 0; x < map.cols; ++x)
                map.at<cv::Vec2f>(y, x) = cv::Vec2f(float(x), float(y)) + flow.at<cv::Vec2f>(y, x);
        }
        cv::Mat small;
        cv::resize(matte, small, map.size(), 0, 0, cv::INTER_LINEAR);
        cv::remap(small, small, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
        cv::resize(small, matte, footage.frames[i].size(), 0, 0, cv::INTER_LINEAR);
        mattes[i] = matte;
        earlier = later;
    }
    return footage.mean(mattes);
}

int worstFrame(const Footage &footage, const Mattes &mattes)
{
    int worst = 1;
    for (int i = 1; i < footage.count(); ++i) {
        if (footage.quality(mattes, i) < footage.quality(mattes, worst))
            worst = i;
    }
    return worst;
}

// Frames between two nodes are tracked from both, and the nearer one counts more.
Mattes corrected(const Footage &footage,
                 const Nodes &nodes,
                 int corrected,
                 const engine::TrackerOptions &options)
{
    Mattes forward = emptyMattes(footage);
    Mattes backward = emptyMattes(footage);
    track(footage, nodes, 0, footage.count() - 1, options, &forward);
    track(footage, nodes, corrected, 0, options, &backward);
    for (int i = 1; i < corrected; ++i) {
        const double share = double(i) / corrected;
        cv::addWeighted(forward[i], 1.0 - share, backward[i], share, 0.0, forward[i]);
    }
    return forward;
}

void measureCorrected(const Footage &footage,
                      const QualityOptions &options,
                      TrackingQuality *quality)
{
    engine::InteractiveSegmenter segmenter(options.segmenter);
    Nodes nodes {
        {0, segmenter.segment(footage.frames[0], footage.scribbles, {}, footage.around(0))}};
    Mattes mattes = emptyMattes(footage);
    track(footage, nodes, 0, footage.count() - 1, options.tracker, &mattes);
    quality->fromStrokes = footage.mean(mattes);

    const int worst = worstFrame(footage, mattes);
    const Correction correction = correctionOf(mattes[worst], footage.truths[worst]);
    const cv::Mat none = cv::Mat::zeros(mattes[worst].size(), CV_8U);
    nodes[worst] = segmenter.segment(footage.frames[worst],
                                     {correction.isKeep ? correction.stroke : none,
                                      correction.isKeep ? none : correction.stroke},
                                     mattes[worst],
                                     footage.around(worst));
    quality->corrected = footage.mean(corrected(footage, nodes, worst, options.tracker));
}

TrackingQuality forwardOf(const Footage &footage, const QualityOptions &options)
{
    TrackingQuality quality;
    Mattes mattes = emptyMattes(footage);
    const int last = footage.count() - 1;
    const auto start = Clock::now();
    std::vector<double> confidences(footage.frames.size(), 0.0);
    track(footage, {{0, footage.truths[0]}}, 0, last, options.tracker, &mattes, &confidences);
    quality.secondsPerFrame = secondsSince(start) / std::max(1, last);
    quality.forward = footage.mean(mattes);
    quality.atEnd = footage.mean(mattes, 1 + last * 3 / 4, last);
    std::vector<double> qualities;
    for (int i = 1; i < last; ++i)
        qualities.push_back(footage.quality(mattes, i));
    quality.confidence =
        rankCorrelation({confidences.begin() + 1, confidences.end() - 1}, qualities);
    return quality;
}

} // namespace

TrackingQuality measureForward(const std::string &folder, const QualityOptions &options)
{
    return forwardOf(Footage(folder, options.height), options);
}

TrackingQuality measureDrawn(const DrawnFootage &drawn, const QualityOptions &options)
{
    return forwardOf(Footage(drawn), options);
}

TrackingQuality measureTracking(const std::string &folder, const QualityOptions &options)
{
    const Footage footage(folder, options.height);
    TrackingQuality quality = forwardOf(footage, options);
    const int last = footage.count() - 1;
    const int middle = last / 2;
    Mattes mattes = emptyMattes(footage);
    const Nodes truth {{middle, footage.truths[middle]}};
    track(footage, truth, middle, last, options.tracker, &mattes);
    track(footage, truth, middle, 0, options.tracker, &mattes);
    quality.bothWays = footage.mean(mattes);
    const auto start = Clock::now();
    quality.warped = warpedQuality(footage);
    quality.warpedSeconds = secondsSince(start) / std::max(1, last);
    measureCorrected(footage, options, &quality);
    return quality;
}

} // namespace zk::bench
