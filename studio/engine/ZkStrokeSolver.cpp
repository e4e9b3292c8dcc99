#include "ZkStrokeSolver.h"

#include "ZkInteractiveSegmenterOptions.h"
#include "ZkMaskTools.h"
#include "ZkMatte.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

cv::Mat borderRing(const cv::Size &size, int width)
{
    cv::Mat ring(size, CV_8U, cv::Scalar(255));
    const cv::Rect inner(width, width, size.width - 2 * width, size.height - 2 * width);
    if (inner.width > 0 && inner.height > 0)
        ring(inner) = 0;
    return ring;
}

// The pixels with the largest distances, this share of the picture.
cv::Mat farthest(const cv::Mat &distance, double share)
{
    std::vector<float> sorted(distance.begin<float>(), distance.end<float>());
    const auto nth = sorted.begin() + std::ptrdiff_t((1.0 - share) * double(sorted.size() - 1));
    std::nth_element(sorted.begin(), nth, sorted.end());
    return distance > *nth;
}

} // namespace

cv::Mat Seeds::weights(double guessedWeight) const
{
    cv::Mat result = sure.clone();
    result.setTo(cv::Scalar(255.0 * guessedWeight), guessed & ~sure);
    return result;
}

StrokeSolver::StrokeSolver(const FrameFeatures &features,
                           const InteractiveSegmenterOptions &options)
    : m_features(features)
    , m_options(options)
{ }

// Nobody said where the background is: most objects do not reach the border of the picture, and what
// is far from the stroke, with edges between, is seldom object.
SeedPair StrokeSolver::seedsFromStrokes(const StrokeTask &task) const
{
    SeedPair seeds;
    seeds.object = {task.keep, cv::Mat::zeros(task.keep.size(), CV_8U)};
    const cv::Mat toKeep = geodesicDistance(m_features.lab, task.keep, m_options.geodesic);
    const cv::Mat near = grownMask(task.keep, 4);
    const cv::Mat guessed = borderRing(task.keep.size(), 2) | farthest(toKeep, m_options.farShare);
    seeds.background = {task.remove, guessed & ~near & ~task.remove};
    return seeds;
}

// What the strokes contradict teaches nothing: the error usually goes on around the stroke.
SeedPair StrokeSolver::seedsFromPrevious(const StrokeTask &task) const
{
    const cv::Mat object = hardMatte(task.previous);
    const cv::Mat believed = cv::abs(loyalty(task)) > 0.5f;
    SeedPair seeds;
    seeds.object = {task.keep, shrunkMask(object, 2) & believed & ~task.remove};
    seeds.background = {task.remove,
                        ~grownMask(object, m_options.outerGap) & believed & ~task.keep};
    return seeds;
}

TrainingSet StrokeSolver::trainingSet(const SeedPair &seeds) const
{
    TrainingSet set;
    const auto append = [&](const Seeds &from, float target) {
        const float guessedWeight = float(m_options.guessedWeight);
        const int strokes = m_options.strokeSamples;
        const cv::Mat guessed = from.guessed & ~from.sure;
        set.append(m_features, sampledPixels(from.sure, strokes), target, 1.0f);
        set.append(
            m_features, sampledPixels(guessed, m_options.guessedSamples), target, guessedWeight);
    };
    append(seeds.object, 1.0f);
    append(seeds.background, 0.0f);
    return set;
}

// Several networks that start differently agree on what the samples say and differ where they do not.
cv::Mat StrokeSolver::networkLogits(const SeedPair &seeds) const
{
    const TrainingSet set = trainingSet(seeds);
    std::vector<cv::Mat> opinions(std::size_t(m_options.networks));
    cv::parallel_for_(cv::Range(0, m_options.networks), [&](const cv::Range &range) {
        for (int i = range.start; i < range.end; ++i) {
            PixelNetworkOptions options = m_options.network;
            options.seed += std::uint64_t(i);
            options.inputs = m_features.planes.rows;
            PixelNetwork network(options);
            network.train(set, m_options.epochs);
            opinions[std::size_t(i)] = network.logits(m_features, {{0, 0}, m_features.size()});
        }
    });
    cv::Mat sum = cv::Mat::zeros(m_features.size(), CV_32F);
    for (const cv::Mat &opinion : opinions)
        sum += opinion;
    return sum / m_options.networks;
}

cv::Mat StrokeSolver::appearance(const SeedPair &seeds) const
{
    ColorModel color(m_options.color);
    color.learn(m_features.lab,
                seeds.object.weights(m_options.guessedWeight),
                seeds.background.weights(m_options.guessedWeight));
    return m_options.colorWeight * color.logits(m_features.lab)
        + m_options.networkWeight * networkLogits(seeds);
}

// 1 at the object's seeds, -1 at those of the background, in between by the geodesic distances.
cv::Mat StrokeSolver::nearness(const SeedPair &seeds) const
{
    const cv::Mat from[] = {seeds.object.all(), seeds.background.all()};
    cv::Mat distances[2];
    cv::parallel_for_(cv::Range(0, 2), [&](const cv::Range &range) {
        for (int i = range.start; i < range.end; ++i)
            distances[i] = geodesicDistance(m_features.lab, from[i], m_options.geodesic);
    });
    const cv::Mat sum = distances[0] + distances[1] + 1e-3;
    return (distances[1] - distances[0]) / sum;
}

// How much the previous matte still counts: fully far from the strokes that contradict it, not at all
// on them.
cv::Mat StrokeSolver::loyalty(const StrokeTask &task) const
{
    const cv::Mat object = hardMatte(task.previous);
    const cv::Mat contradicting = (task.keep & ~object) | (task.remove & object);
    cv::Mat prior;
    task.previous.convertTo(prior, CV_32F, 2.0 / 255.0, -1.0);
    if (cv::countNonZero(contradicting) == 0)
        return prior;
    const cv::Mat distance = geodesicDistance(m_features.lab, contradicting, m_options.geodesic);
    const cv::Mat reach = cv::min(distance / m_options.correctionReach, 1.0);
    return prior.mul(reach);
}

cv::Mat StrokeSolver::solve(const StrokeTask &task) const
{
    const bool correcting = !task.previous.empty();
    SeedPair seeds = correcting ? seedsFromPrevious(task) : seedsFromStrokes(task);
    cv::Mat constant = m_options.geodesicWeight * nearness(seeds);
    if (correcting)
        constant += m_options.previousWeight * loyalty(task);
    const cv::Mat anchors = correcting ? task.keep | hardMatte(task.previous) : task.keep;
    cv::Mat matte;
    const int passes = correcting ? 1 : m_options.passes;
    for (int pass = 0; pass < passes; ++pass) {
        cv::Mat logits = appearance(seeds) + constant;
        logits.setTo(certainLogit, task.keep);
        logits.setTo(-certainLogit, task.remove);
        matte = connectedTo(cutGraph(logits, m_features.lab, m_options.cut), anchors);
        seeds.background.guessed = ~grownMask(matte, m_options.gap) & ~task.keep;
    }
    return matte;
}

} // namespace zk::engine
