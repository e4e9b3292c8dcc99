#include "ZkInteractiveSegmenter.h"

#include "ZkInteractiveSegmenterOptions.h"
#include "ZkMaskTools.h"
#include "ZkMatte.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

bool fits(const cv::Mat &mask, const cv::Size &size)
{
    return mask.empty() || isMatteOf(mask, size);
}

// A coarse pixel is painted when any part of it is: thin strokes must not get lost.
cv::Mat shrunkStroke(const cv::Mat &stroke, const cv::Size &size)
{
    if (stroke.empty())
        return cv::Mat::zeros(size, CV_8U);
    cv::Mat small;
    const cv::Mat painted = stroke != 0;
    cv::resize(painted, small, size, 0, 0, cv::INTER_AREA);
    return small != 0;
}

cv::Mat shrunkMatte(const cv::Mat &matte, const cv::Size &size)
{
    cv::Mat small;
    cv::resize(matte, small, size, 0, 0, cv::INTER_AREA);
    return small;
}

cv::Mat borderRing(const cv::Size &size, int width)
{
    cv::Mat ring(size, CV_8U, cv::Scalar(255));
    const cv::Rect inner(width, width, size.width - 2 * width, size.height - 2 * width);
    if (inner.width > 0 && inner.height > 0)
        ring(inner) = 0;
    return ring;
}

// What is known at working size before anything is computed.
struct Task
{
    cv::Mat keep;
    cv::Mat remove;
    cv::Mat previous; // CV_8UC1 matte, empty = none
};

// The pixels that are taken for one side: those the user vouches for, and those that are guessed.
struct Seeds
{
    cv::Mat sure;
    cv::Mat guessed;

    cv::Mat all() const { return sure | guessed; }
    cv::Mat weights(double guessedWeight) const
    {
        cv::Mat result = sure.clone();
        result.setTo(cv::Scalar(255.0 * guessedWeight), guessed & ~sure);
        return result;
    }
};

struct SeedPair
{
    Seeds object;
    Seeds background;
};

// The pixels with the largest distances, this share of the picture.
cv::Mat farthest(const cv::Mat &distance, double share)
{
    std::vector<float> sorted(distance.begin<float>(), distance.end<float>());
    const auto nth = sorted.begin() + std::ptrdiff_t((1.0 - share) * double(sorted.size() - 1));
    std::nth_element(sorted.begin(), nth, sorted.end());
    return distance > *nth;
}

} // namespace

struct InteractiveSegmenter::Private
{
    explicit Private(const InteractiveSegmenterOptions &o)
        : options(o)
    { }

    const FrameFeatures &featuresOf(const cv::Mat &frame);
    SeedPair seedsFromStrokes(const Task &task) const;
    SeedPair seedsFromPrevious(const Task &task) const;
    TrainingSet trainingSet(const SeedPair &seeds) const;
    cv::Mat appearance(const SeedPair &seeds) const;
    cv::Mat nearness(const SeedPair &seeds) const;
    cv::Mat loyalty(const Task &task) const;
    cv::Mat solve(const Task &task) const;

    InteractiveSegmenterOptions options;
    cv::Mat cachedFrame;
    FrameFeatures features;
};

// The caller's buffer may hold another frame by now, so the pixels are compared: that takes a small part
// of the time of the features.
const FrameFeatures &InteractiveSegmenter::Private::featuresOf(const cv::Mat &frame)
{
    const bool same = frame.size() == cachedFrame.size() && frame.type() == cachedFrame.type()
        && cv::norm(frame, cachedFrame, cv::NORM_INF) == 0.0;
    if (!same) {
        features = computeFeatures(frame, options.features);
        cachedFrame = frame.clone();
    }
    return features;
}

// Nobody said where the background is: most objects do not reach the border of the picture, and what
// is far from the stroke, with edges between, is seldom object.
SeedPair InteractiveSegmenter::Private::seedsFromStrokes(const Task &task) const
{
    SeedPair seeds;
    seeds.object = {task.keep, cv::Mat::zeros(task.keep.size(), CV_8U)};
    const cv::Mat toKeep = geodesicDistance(features.lab, task.keep, options.geodesic);
    const cv::Mat near = grownMask(task.keep, 4);
    const cv::Mat guessed = borderRing(task.keep.size(), 2) | farthest(toKeep, options.farShare);
    seeds.background = {task.remove, guessed & ~near & ~task.remove};
    return seeds;
}

// What the strokes contradict teaches nothing: the error usually goes on around the stroke.
SeedPair InteractiveSegmenter::Private::seedsFromPrevious(const Task &task) const
{
    const cv::Mat object = hardMatte(task.previous);
    const cv::Mat believed = cv::abs(loyalty(task)) > 0.5f;
    SeedPair seeds;
    seeds.object = {task.keep, shrunkMask(object, 2) & believed & ~task.remove};
    seeds.background = {task.remove, ~grownMask(object, 2) & believed & ~task.keep};
    return seeds;
}

TrainingSet InteractiveSegmenter::Private::trainingSet(const SeedPair &seeds) const
{
    TrainingSet set;
    const auto append = [&](const Seeds &from, float target) {
        const float guessedWeight = float(options.guessedWeight);
        const int strokes = options.strokeSamples;
        const cv::Mat guessed = from.guessed & ~from.sure;
        set.append(features, sampledPixels(from.sure, strokes), target, 1.0f);
        set.append(features, sampledPixels(guessed, options.guessedSamples), target, guessedWeight);
    };
    append(seeds.object, 1.0f);
    append(seeds.background, 0.0f);
    return set;
}

cv::Mat InteractiveSegmenter::Private::appearance(const SeedPair &seeds) const
{
    ColorModel color(options.color);
    color.learn(features.lab,
                seeds.object.weights(options.guessedWeight),
                seeds.background.weights(options.guessedWeight));
    PixelNetwork network(options.network);
    network.train(trainingSet(seeds), options.epochs);
    const cv::Rect everything({0, 0}, features.size());
    return options.colorWeight * color.logits(features.lab)
        + options.networkWeight * network.logits(features, everything);
}

// 1 at the object's seeds, -1 at those of the background, in between by the geodesic distances.
cv::Mat InteractiveSegmenter::Private::nearness(const SeedPair &seeds) const
{
    const cv::Mat object = geodesicDistance(features.lab, seeds.object.all(), options.geodesic);
    const cv::Mat background =
        geodesicDistance(features.lab, seeds.background.all(), options.geodesic);
    const cv::Mat sum = object + background + 1e-3;
    return (background - object) / sum;
}

// How much the previous matte still counts: fully far from the strokes that contradict it, not at all
// on them.
cv::Mat InteractiveSegmenter::Private::loyalty(const Task &task) const
{
    const cv::Mat object = hardMatte(task.previous);
    const cv::Mat contradicting = (task.keep & ~object) | (task.remove & object);
    cv::Mat prior;
    task.previous.convertTo(prior, CV_32F, 2.0 / 255.0, -1.0);
    if (cv::countNonZero(contradicting) == 0)
        return prior;
    const cv::Mat distance = geodesicDistance(features.lab, contradicting, options.geodesic);
    const cv::Mat reach = cv::min(distance / options.correctionReach, 1.0);
    return prior.mul(reach);
}

cv::Mat InteractiveSegmenter::Private::solve(const Task &task) const
{
    const bool correcting = !task.previous.empty();
    SeedPair seeds = correcting ? seedsFromPrevious(task) : seedsFromStrokes(task);
    cv::Mat constant = options.geodesicWeight * nearness(seeds);
    if (correcting)
        constant += options.previousWeight * loyalty(task);
    const cv::Mat anchors = correcting ? task.keep | hardMatte(task.previous) : task.keep;
    cv::Mat matte;
    for (int pass = 0; pass < options.passes; ++pass) {
        cv::Mat logits = appearance(seeds) + constant;
        logits.setTo(certainLogit, task.keep);
        logits.setTo(-certainLogit, task.remove);
        matte = connectedTo(cutGraph(logits, features.lab, options.cut), anchors);
        seeds.background.guessed = ~grownMask(matte, options.gap) & ~task.keep;
    }
    return matte;
}

InteractiveSegmenter::InteractiveSegmenter()
    : InteractiveSegmenter(InteractiveSegmenterOptions())
{ }

InteractiveSegmenter::InteractiveSegmenter(const InteractiveSegmenterOptions &options)
    : d(std::make_unique<Private>(options))
{ }

InteractiveSegmenter::~InteractiveSegmenter() = default;
InteractiveSegmenter::InteractiveSegmenter(InteractiveSegmenter &&) noexcept = default;
InteractiveSegmenter &InteractiveSegmenter::operator=(InteractiveSegmenter &&) noexcept = default;

cv::Mat InteractiveSegmenter::segment(const cv::Mat &frame,
                                      const Scribbles &scribbles,
                                      const cv::Mat &previous)
{
    if (!isFrame(frame) || !fits(scribbles.keep, frame.size())
        || !fits(scribbles.remove, frame.size()) || !fits(previous, frame.size()))
        return {};
    const bool painted = !scribbles.keep.empty() && cv::countNonZero(scribbles.keep) > 0;
    if (!painted && previous.empty())
        return {};
    const cv::Size size = d->featuresOf(frame).size();
    Task task;
    task.remove = shrunkStroke(scribbles.remove, size);
    task.keep = shrunkStroke(scribbles.keep, size) & ~task.remove;
    if (!previous.empty())
        task.previous = shrunkMatte(previous, size);
    cv::Mat matte = refineMatte(frame, d->solve(task), d->options.refiner);
    if (!scribbles.keep.empty())
        matte.setTo(255, scribbles.keep);
    if (!scribbles.remove.empty())
        matte.setTo(0, scribbles.remove);
    return matte;
}

} // namespace zk::engine
