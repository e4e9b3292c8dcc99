#include "ZkBoxSegmenter.h"

#include "ZkMaskTools.h"
#include "ZkMatte.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

cv::Mat filled(const cv::Size &size, const cv::Rect &box)
{
    cv::Mat mask = cv::Mat::zeros(size, CV_8U);
    mask(box & cv::Rect({0, 0}, size)) = 255;
    return mask;
}

// The box in a picture that was scaled to that size; never empty.
cv::Rect scaled(const cv::Rect &box, const cv::Size &from, const cv::Size &to)
{
    const double x = double(to.width) / from.width;
    const double y = double(to.height) / from.height;
    const cv::Point first(std::min(cvFloor(box.x * x), to.width - 1),
                          std::min(cvFloor(box.y * y), to.height - 1));
    const cv::Point end(std::max(first.x + 1, cvCeil(box.br().x * x)),
                        std::max(first.y + 1, cvCeil(box.br().y * y)));
    return cv::Rect(first, end) & cv::Rect({0, 0}, to);
}

// The box and its surroundings at working size.
class BoxTask
{
public:
    BoxTask(const cv::Mat &picture,
            const std::vector<cv::Mat> &neighbours,
            const cv::Rect &box,
            const BoxSegmenterOptions &options)
        : m_options(options)
        , m_features(computeFeatures(picture, options.features))
        , m_network(options.network)
        , m_box(scaled(box, picture.size(), m_features.size()))
        , m_inside(filled(m_features.size(), m_box))
        , m_distance(distanceFromCentre())
        , m_foreignMotion(foreignMotion(picture, neighbours))
        , m_motion(m_foreignMotion.logits())
        , m_moving(m_inside & (m_motion >= 0.5 * m_options.motion.most))
    { }

    // 0 or 255, at working size.
    cv::Mat solve();
    // Of the box.
    double share(const cv::Mat &matte) const
    {
        return double(cv::countNonZero(matte)) / m_box.area();
    }
    bool hasSurroundings() const { return m_box.area() < m_inside.size().area(); }

private:
    cv::Mat distanceFromCentre() const;
    ForeignMotion foreignMotion(const cv::Mat &picture,
                                const std::vector<cv::Mat> &neighbours) const;
    void guess();
    cv::Mat standingOut() const;
    cv::Mat appearance();
    void learnFrom(const cv::Mat &matte);
    cv::Mat cut(cv::Mat logits) const;

    const BoxSegmenterOptions &m_options;
    const FrameFeatures m_features;
    PixelNetwork m_network;
    const cv::Rect m_box;
    const cv::Mat m_inside;
    // From the centre of the box, squared; 1 on the ellipse that fits into it.
    const cv::Mat m_distance;
    const ForeignMotion m_foreignMotion;
    const cv::Mat m_motion; // logits of what moves by itself
    const cv::Mat m_moving;
    cv::Mat m_object; // what is learnt from
    cv::Mat m_background;
};

// The value below which that share of the values under the mask lies.
float quantile(const cv::Mat &values, const cv::Mat &mask, double share)
{
    std::vector<float> sorted;
    for (int y = 0; y < values.rows; ++y) {
        for (int x = 0; x < values.cols; ++x) {
            if (mask.at<uchar>(y, x) != 0)
                sorted.push_back(values.at<float>(y, x));
        }
    }
    const auto nth = sorted.begin() + std::ptrdiff_t(share * double(sorted.size() - 1));
    std::nth_element(sorted.begin(), nth, sorted.end());
    return *nth;
}

cv::Mat BoxTask::distanceFromCentre() const
{
    cv::Mat distance(m_features.size(), CV_32F);
    for (int y = 0; y < distance.rows; ++y) {
        for (int x = 0; x < distance.cols; ++x) {
            const double dx = 2 * (x + 0.5 - m_box.x) / m_box.width - 1;
            const double dy = 2 * (y + 0.5 - m_box.y) / m_box.height - 1;
            distance.at<float>(y, x) = float(dx * dx + dy * dy);
        }
    }
    return distance;
}

ForeignMotion BoxTask::foreignMotion(const cv::Mat &picture,
                                     const std::vector<cv::Mat> &neighbours) const
{
    std::vector<cv::Mat> small;
    for (const cv::Mat &neighbour : neighbours)
        small.push_back(shrunkFrame(neighbour, m_features.size()));
    return {shrunkFrame(picture, m_features.size()), small, ~m_inside, m_options.motion};
}

// How much a pixel differs from what surrounds the box: how far the way out is, across edges, and how
// rare its colour is out there. Objects seldom reach the corners of the box that fits them.
cv::Mat BoxTask::standingOut() const
{
    const cv::Mat outside = ~m_inside;
    const cv::Mat far = geodesicDistance(m_features.lab, outside, m_options.geodesic);
    ColorModel color(m_options.color);
    color.learn(m_features.lab, m_inside, outside);
    cv::Mat score = color.logits(m_features.lab) * m_options.rarity;
    score += far * (1.0 / std::max(1e-3f, quantile(far, m_inside, 0.9)));
    score -= m_distance * m_options.centre;
    score += m_motion * m_options.motionGuess;
    return score;
}

void BoxTask::guess()
{
    const cv::Mat score = standingOut();
    const float object = quantile(score, m_inside, 1 - m_options.objectGuess);
    const float background = quantile(score, m_inside, m_options.backgroundGuess);
    m_object = m_inside & ((score >= object) | m_moving);
    m_background = ~m_inside | ((score < background) & ~m_moving);
}

cv::Mat BoxTask::appearance()
{
    ColorModel color(m_options.color);
    color.learn(m_features.lab, m_object, m_background);
    TrainingSet set;
    set.append(m_features, sampledPixels(m_object, m_options.samples), 1.0f, 1.0f);
    set.append(m_features, sampledPixels(m_background, m_options.samples), 0.0f, 1.0f);
    m_network.train(set, m_options.epochs);
    const cv::Rect everything({0, 0}, m_features.size());
    return m_motion + m_options.colorWeight * color.logits(m_features.lab)
        + m_options.networkWeight * m_network.logits(m_features, everything);
}

// What the edge of the matte leaves out: it may be of either side.
cv::Mat core(const cv::Mat &matte)
{
    const cv::Mat sure = shrunkMask(matte, 1);
    return cv::countNonZero(sure) > 0 ? sure : matte;
}

void BoxTask::learnFrom(const cv::Mat &matte)
{
    m_object = core(matte);
    m_background = ~m_inside | (m_inside & ~grownMask(matte, m_options.gap) & ~m_moving);
}

cv::Mat BoxTask::cut(cv::Mat logits) const
{
    logits.setTo(-certainLogit, ~m_inside);
    return cutGraph(logits, m_features.lab, m_options.cut);
}

cv::Mat BoxTask::solve()
{
    guess();
    cv::Mat logits = appearance();
    // Something must stand out by itself; only then its place in the box counts.
    cv::Mat matte = cut(logits);
    for (int pass = 0; pass < m_options.passes && share(matte) >= m_options.leastShare; ++pass) {
        if (pass > 0) {
            learnFrom(matte);
            logits = appearance();
        }
        const cv::Mat motion = m_foreignMotion.logitsBetween(core(matte));
        matte = cut(logits + motion + m_options.middle * (1 - m_distance));
    }
    return matte;
}

// Without the parts that are small beside the largest one.
cv::Mat largeParts(const cv::Mat &matte, const BoxSegmenterOptions &options)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(matte, labels, stats, centres, 8, CV_32S);
    int largest = 0;
    for (int i = 1; i < count; ++i)
        largest = std::max(largest, stats.at<int>(i, cv::CC_STAT_AREA));
    const int least = options.onlyLargest ? largest : cvCeil(options.leastPart * largest);
    cv::Mat result = matte.clone();
    for (int i = 1; i < count; ++i) {
        if (stats.at<int>(i, cv::CC_STAT_AREA) < least)
            result.setTo(0, labels == i);
    }
    return result;
}

// Of the picture's size, or empty when nothing stands out.
cv::Mat objectIn(const cv::Mat &picture,
                 const std::vector<cv::Mat> &neighbours,
                 const cv::Rect &box,
                 const BoxSegmenterOptions &options)
{
    BoxTask task(picture, neighbours, box, options);
    if (!task.hasSurroundings())
        return {};
    const cv::Mat coarse = largeParts(task.solve(), options);
    const double share = task.share(coarse);
    if (share < options.leastShare || share > options.largestShare)
        return {};
    cv::Mat matte = refineMatte(picture, coarse, options.refiner);
    matte.setTo(0, ~filled(picture.size(), box));
    return matte;
}

} // namespace

cv::Mat segmentBox(const cv::Mat &frame,
                   const cv::Rect &box,
                   const BoxSegmenterOptions &options,
                   const std::vector<cv::Mat> &neighbours)
{
    if (!isFrame(frame))
        return {};
    const cv::Rect inside = box & cv::Rect({0, 0}, frame.size());
    if (inside.empty())
        return {};
    const cv::Size margin(
        std::max(options.leastSurroundings, cvRound(inside.width * options.surroundings)),
        std::max(options.leastSurroundings, cvRound(inside.height * options.surroundings)));
    const cv::Rect area = grownBox(inside, margin, frame.size());
    std::vector<cv::Mat> around;
    for (const cv::Mat &neighbour : neighbours) {
        if (neighbour.size() == frame.size() && neighbour.type() == frame.type())
            around.push_back(neighbour(area));
    }
    const cv::Mat matte = objectIn(frame(area), around, inside - area.tl(), options);
    cv::Mat result = cv::Mat::zeros(frame.size(), CV_8U);
    if (matte.empty())
        result(inside) = 255;
    else
        matte.copyTo(result(area));
    return result;
}

} // namespace zk::engine
