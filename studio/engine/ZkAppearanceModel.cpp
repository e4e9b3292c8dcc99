#include "ZkAppearanceModel.h"

#include "ZkMaskTools.h"

#include <algorithm>

namespace zk::engine {

namespace {

// The samples of one kind share the weight that their kind has, however many there are.
float shareOf(double total, const std::vector<int> &pixels)
{
    return float(total / std::max<std::size_t>(1, pixels.size()));
}

TrainingSet subset(const TrainingSet &set, int count, cv::RNG &random)
{
    TrainingSet result;
    if (set.size() == 0)
        return result;
    result.features.create(count, set.features.cols, CV_32F);
    for (int i = 0; i < count; ++i) {
        const int chosen = random.uniform(0, set.size());
        set.features.row(chosen).copyTo(result.features.row(i));
        result.targets.push_back(set.targets[chosen]);
        result.weights.push_back(set.weights[chosen]);
    }
    return result;
}

} // namespace

AppearanceModel::AppearanceModel(const AppearanceOptions &options)
    : m_options(options)
    , m_network(options.network)
    , m_color(options.color)
    , m_random(options.network.seed + 1)
{ }

void AppearanceModel::learnTruth(const FrameFeatures &features, const cv::Mat &matte)
{
    const cv::Mat object = shrunkMask(matte, m_options.gap);
    const cv::Mat background = ~grownMask(matte, m_options.gap);
    const cv::Mat around = background & grownMask(matte, m_options.nearReach);
    TrainingSet set;
    const auto append = [&](const cv::Mat &mask, int count, float target, double total) {
        const std::vector<int> pixels = sampledPixels(mask, count);
        set.append(features, pixels, target, shareOf(total, pixels));
    };
    const int count = m_options.objectSamples + m_options.nearSamples + m_options.farSamples;
    // A thin object has no inside.
    append(
        cv::countNonZero(object) > 0 ? object : matte, m_options.objectSamples, 1.0f, 0.4 * count);
    append(around, m_options.nearSamples, 0.0f, 0.35 * count);
    append(background, m_options.farSamples, 0.0f, 0.25 * count);
    m_network.train(set, m_options.truthEpochs);
    m_color.update(features.lab, matte, around, 0.5);
    remember(set);
}

void AppearanceModel::remember(const TrainingSet &set)
{
    m_truths.append(set);
    if (m_truths.size() > m_options.maximumTruths)
        m_truths = subset(m_truths, m_options.maximumTruths, m_random);
}

void AppearanceModel::adapt(const FrameFeatures &features,
                            const cv::Mat &matte,
                            const cv::Mat &doubtful)
{
    const cv::Mat object = shrunkMask(matte, m_options.gap) & ~doubtful;
    const cv::Mat background = ~grownMask(matte, m_options.gap) & ~doubtful;
    const cv::Mat around = background & grownMask(matte, m_options.nearReach);
    TrainingSet set = subset(m_truths, m_options.replaySamples, m_random);
    const auto append = [&](const cv::Mat &mask, float target) {
        const std::vector<int> pixels = sampledPixels(mask, m_options.adaptSamples);
        set.append(features, pixels, target, float(m_options.adaptWeight));
    };
    append(object, 1.0f);
    append(around, 0.0f);
    m_network.train(set, 1, m_options.adaptRate);
    m_color.update(features.lab, object, around, m_options.colorRate);
}

cv::Mat AppearanceModel::networkLogits(const FrameFeatures &features, const cv::Rect &area) const
{
    return m_network.logits(features, area);
}

cv::Mat AppearanceModel::colorLogits(const FrameFeatures &features, const cv::Rect &area) const
{
    return m_color.logits(features.lab(area));
}

} // namespace zk::engine
