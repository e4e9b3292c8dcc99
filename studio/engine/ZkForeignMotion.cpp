#include "ZkForeignMotion.h"

#include "ZkMaskTools.h"
#include "erasing/ZkFlowCompletion.h"
#include "erasing/ZkMotionModel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace zk::engine {

namespace {

cv::Mat brightness(const cv::Mat &picture)
{
    cv::Mat gray;
    cv::cvtColor(picture, gray, cv::COLOR_RGB2GRAY);
    return gray;
}

constexpr int mostSamples = 400;
constexpr double leastApart = 1.0; // pixels that an object moves against its surroundings
constexpr int joined = 2; // pixels between parts that belong together
constexpr double leastShadow = 10.0; // grey levels
constexpr float hidden = 1e6f; // a difference that is not known

// Motion to another picture as if the surroundings were everywhere.
struct SurroundingMotion
{
    SurroundingMotion(const cv::Mat &picture, const cv::Mat &other, const cv::Mat &unknown)
    {
        const cv::Mat from = brightness(picture), to = brightness(other);
        measured = flowBetween(from, to);
        const cv::Mat error = contradictions(measured, flowBetween(to, from));
        covered = error > mostContradiction;
        flow = measured.clone();
        completeFlow(&flow, unknown, error);
    }

    cv::Mat measured;
    cv::Mat flow; // the surroundings' own
    cv::Mat covered; // what is not to be seen in the other picture, wherever it went
};

// Mean difference of the channels around each pixel; the motion may be wrong by a pixel.
cv::Mat leastDifference(const cv::Mat &picture, const cv::Mat &moved)
{
    cv::Mat padded, least;
    cv::copyMakeBorder(moved, padded, 1, 1, 1, 1, cv::BORDER_REPLICATE);
    for (int i = 0; i < 9; ++i) {
        cv::Mat difference, mean;
        cv::absdiff(picture, padded(cv::Rect({i % 3, i / 3}, picture.size())), difference);
        cv::transform(difference, mean, cv::Matx13f::all(1.0f / 3.0f));
        mean.convertTo(mean, CV_32F);
        cv::blur(mean, mean, {3, 3});
        least = least.empty() ? mean : cv::Mat(cv::min(least, mean));
    }
    return least;
}

// How much the other picture differs from what that motion would make of this one. What is covered there
// is not known, and would differ if it went with the motion.
cv::Mat differenceFrom(const cv::Mat &other,
                       const cv::Mat &picture,
                       const SurroundingMotion &motion,
                       const cv::Mat &flow)
{
    cv::Mat difference = leastDifference(picture, movedBack(other, flow));
    const cv::Rect inside({0, 0}, picture.size());
    difference.forEach<float>([&](float &value, const int *at) {
        const cv::Vec2f &go = flow.at<cv::Vec2f>(at[0], at[1]);
        const cv::Point end(cvRound(float(at[1]) + go[0]), cvRound(float(at[0]) + go[1]));
        if (!inside.contains(end) || motion.covered.at<uchar>(at[0], at[1]))
            value = hidden;
    });
    return difference;
}

// What is at the same height is usually at the same distance: in each row the motion is that of the last
// pixels before the unknown ones, from the left or from the right.
cv::Mat continuedAlongRows(const SurroundingMotion &motion, const cv::Mat &unknown, bool fromLeft)
{
    cv::Mat flow = motion.flow.clone(), smooth;
    cv::blur(motion.flow, smooth, {5, 5});
    for (int y = 0; y < flow.rows; ++y) {
        int last = -1;
        for (int i = 0; i < flow.cols; ++i) {
            const int x = fromLeft ? i : flow.cols - 1 - i;
            if (!unknown.at<uchar>(y, x))
                last = x;
            else if (last >= 0)
                flow.at<cv::Vec2f>(y, x) = smooth.at<cv::Vec2f>(y, last);
        }
    }
    return flow;
}

// The least of several pictures.
struct Least
{
    void add(const cv::Mat &one) { values = values.empty() ? one : cv::Mat(cv::min(values, one)); }

    cv::Mat values;
};

// What most of the surroundings stay below.
double usual(const cv::Mat &difference, const cv::Mat &known, double share)
{
    std::vector<float> values;
    for (const int i : sampledPixels(known, 4000))
        values.push_back(difference.at<float>(i / known.cols, i % known.cols));
    if (values.empty())
        return 255.0;
    const auto nth = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), nth, values.end());
    return double(*nth);
}

// The motion of what the mask covers, continued over the picture; false when it is none of its own.
bool objectMotion(const SurroundingMotion &motion, const cv::Mat &mask, MotionModel *model)
{
    const auto samples = motionSamples(motion.measured, mask & ~motion.covered, mostSamples);
    double apart = 0.0;
    for (const MotionSample &sample : samples)
        apart += cv::norm(sample.motion - motion.flow.at<cv::Vec2f>(cv::Point(sample.at)));
    return apart > leastApart * double(samples.size())
        && model->fit(samples, cv::boundingRect(mask), 1);
}

// Where the measured motion is rather the object's than the surroundings'.
cv::Mat withObject(const SurroundingMotion &motion, const MotionModel &model)
{
    cv::Mat result(motion.flow.size(), CV_8U);
    result.forEach<uchar>([&](uchar &value, const int *at) {
        const cv::Vec2f own = motion.measured.at<cv::Vec2f>(at[0], at[1]);
        const cv::Vec2f object = model.motionAt({float(at[1]), float(at[0])});
        const double off = cv::norm(own - object);
        value = off < 0.5 * cv::norm(own - motion.flow.at<cv::Vec2f>(at[0], at[1])) ? 255 : 0;
    });
    return result;
}

// How much lighter the other picture is where the surroundings would have moved.
cv::Mat
darknessAgainst(const cv::Mat &other, const cv::Mat &picture, const SurroundingMotion &motion)
{
    cv::Mat here, there;
    cv::blur(brightness(picture), here, {5, 5});
    cv::blur(movedBack(brightness(other), motion.flow), there, {5, 5});
    cv::Mat result;
    cv::subtract(there, here, result, cv::noArray(), CV_32F);
    return result;
}

} // namespace

struct ForeignMotion::Neighbour
{
    Neighbour(const cv::Mat &from, const cv::Mat &to, const cv::Mat &unknown)
        : picture(to)
        , motion(from, to, unknown)
    {
        Least least;
        for (const cv::Mat &flow : {motion.flow,
                                    continuedAlongRows(motion, unknown, true),
                                    continuedAlongRows(motion, unknown, false)})
            least.add(differenceFrom(to, from, motion, flow));
        difference = least.values;
    }

    cv::Mat picture;
    SurroundingMotion motion;
    cv::Mat difference; // from what the surroundings' motion would make of it
};

ForeignMotion::ForeignMotion(const cv::Mat &picture,
                             const std::vector<cv::Mat> &others,
                             const cv::Mat &surroundings,
                             const ForeignMotionOptions &options)
    : m_options(options)
    , m_picture(picture)
    , m_unknown(grownMask(~surroundings, options.gap))
{
    for (const cv::Mat &other : others)
        m_neighbours.push_back(std::make_shared<const Neighbour>(picture, other, m_unknown));
}

double ForeignMotion::noiseOf(const cv::Mat &differences) const
{
    return std::max(m_options.noise, usual(differences, ~m_unknown, m_options.level));
}

cv::Mat ForeignMotion::logits() const
{
    Least least;
    for (const auto &neighbour : m_neighbours)
        least.add(neighbour->difference);
    if (m_neighbours.empty())
        return cv::Mat::zeros(m_picture.size(), CV_32F);
    cv::Mat differences = least.values.clone();
    differences.setTo(0.0f, differences >= hidden);
    const double counts = noiseOf(differences);
    cv::Mat result = (differences - counts) * (m_options.gain / counts);
    return cv::min(cv::max(result, 0.0), m_options.most);
}

cv::Mat ForeignMotion::logitsBetween(const cv::Mat &mask) const
{
    Least behind, object;
    for (const auto &neighbour : m_neighbours) {
        MotionModel model;
        if (!objectMotion(neighbour->motion, mask, &model))
            continue;
        const cv::Mat flow = model.motionOver(m_picture.size());
        object.add(differenceFrom(neighbour->picture, m_picture, neighbour->motion, flow));
        behind.add(neighbour->difference);
    }
    if (behind.values.empty())
        return cv::Mat::zeros(m_picture.size(), CV_32F);
    const cv::Mat unknown = (behind.values >= hidden) | (object.values >= hidden);
    cv::Mat differences = behind.values.clone();
    differences.setTo(0.0f, differences >= hidden);
    cv::Mat result =
        (behind.values - object.values) * (m_options.gainBetween / noiseOf(differences));
    result = cv::min(cv::max(result, -m_options.mostBetween), m_options.mostBetween);
    result.setTo(0.0f, unknown);
    cv::blur(result, result, {5, 5});
    return result;
}

cv::Mat movingAlong(const cv::Mat &picture,
                    const std::vector<cv::Mat> &others,
                    const cv::Mat &mask,
                    int reach,
                    const ForeignMotionOptions &options)
{
    const cv::Mat near = grownMask(mask, reach);
    Least differences, darkness;
    cv::Mat along = cv::Mat::zeros(mask.size(), CV_8U);
    for (const cv::Mat &other : others) {
        const SurroundingMotion motion(picture, other, near);
        MotionModel object;
        if (!objectMotion(motion, mask, &object))
            continue;
        const cv::Mat difference = differenceFrom(other, picture, motion, motion.flow);
        cv::Mat darker = darknessAgainst(other, picture, motion);
        darker.setTo(hidden, difference >= hidden);
        along |= withObject(motion, object) & (difference < hidden);
        differences.add(difference);
        darkness.add(darker);
    }
    if (differences.values.empty() || cv::countNonZero(~near) == 0)
        return {};
    const cv::Mat &least = differences.values;
    const double counts = 2.0 * std::max(options.noise, usual(least, ~near, options.level));
    const cv::Mat shadow = darkness.values > std::max(counts, leastShadow);
    const cv::Mat parts = near & (along | shadow) & (least > counts) & (least < hidden);
    cv::Mat result = connectedTo(shrunkMask(grownMask(parts | mask, joined), joined), mask);
    result.setTo(0, mask);
    return cv::countNonZero(result) > 0 ? result : cv::Mat();
}

} // namespace zk::engine
