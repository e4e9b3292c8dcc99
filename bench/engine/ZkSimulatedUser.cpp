#include "ZkSimulatedUser.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::bench {

namespace {

constexpr int brush = 5; // pixels, as in the strokes of the clips
constexpr double core = 0.5; // of the largest depth: what a person takes for the middle

struct Error
{
    cv::Mat pixels;
    int area = 0;
};

Error largestPart(const cv::Mat &pixels)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(pixels, labels, stats, centres);
    Error largest;
    for (int i = 1; i < count; ++i) {
        const int area = stats.at<int>(i, cv::CC_STAT_AREA);
        if (area > largest.area)
            largest = {labels == i, area};
    }
    return largest;
}

// Nobody corrects what is narrower than the brush: errors along a good outline are.
cv::Mat paintable(const cv::Mat &pixels)
{
    cv::Mat wide;
    cv::morphologyEx(
        pixels, wide, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_ELLIPSE, {brush, brush}));
    return wide;
}

// The part of the error that is deep inside, around the deepest place.
cv::Mat middleOf(const cv::Mat &error)
{
    cv::Mat padded, depth;
    cv::copyMakeBorder(error, padded, 1, 1, 1, 1, cv::BORDER_CONSTANT, cv::Scalar(0));
    cv::distanceTransform(padded, depth, cv::DIST_L2, 5);
    depth = depth({1, 1, error.cols, error.rows});
    double deepest = 0.0;
    cv::Point at;
    cv::minMaxLoc(depth, nullptr, &deepest, nullptr, &at);
    const cv::Mat deep = depth >= core * deepest;
    cv::Mat labels;
    cv::connectedComponents(deep, labels);
    return labels == labels.at<int>(at);
}

// From one end of the pixels to the other along their longer axis, in steps of a few brushes.
std::vector<cv::Point> wayThrough(const cv::Mat &pixels)
{
    std::vector<cv::Point> points;
    cv::findNonZero(pixels, points);
    const cv::Moments moments = cv::moments(pixels, true);
    const cv::Point2d center(moments.m10 / moments.m00, moments.m01 / moments.m00);
    const double angle = 0.5 * std::atan2(2.0 * moments.mu11, moments.mu20 - moments.mu02);
    const cv::Point2d axis(std::cos(angle), std::sin(angle));
    const auto place = [&](const cv::Point &point) {
        return (cv::Point2d(point) - center).dot(axis);
    };
    std::sort(points.begin(), points.end(), [&](const cv::Point &a, const cv::Point &b) {
        return place(a) < place(b);
    });
    std::vector<cv::Point> way;
    const std::size_t parts = std::clamp<std::size_t>(
        std::size_t((place(points.back()) - place(points.front())) / (3 * brush)), 2, 20);
    for (std::size_t i = 0; i < parts; ++i) {
        const std::size_t first = i * points.size() / parts;
        const std::size_t last = std::max(first + 1, (i + 1) * points.size() / parts);
        cv::Point2d sum;
        for (std::size_t k = first; k < last; ++k)
            sum += cv::Point2d(points[k]);
        way.push_back(sum * (1.0 / double(last - first)));
    }
    return way;
}

} // namespace

Correction correctionOf(const cv::Mat &matte, const cv::Mat &truth)
{
    const cv::Mat object = matte >= 128;
    const cv::Mat wanted = truth >= 128;
    Error missing = largestPart(paintable(wanted & ~object));
    Error surplus = largestPart(paintable(object & ~wanted));
    if (missing.area == 0 && surplus.area == 0) {
        missing = largestPart(wanted & ~object);
        surplus = largestPart(object & ~wanted);
    }
    const Error &worse = missing.area >= surplus.area ? missing : surplus;
    Correction correction;
    if (worse.area == 0)
        return correction;
    correction.isKeep = &worse == &missing;
    correction.stroke = cv::Mat::zeros(matte.size(), CV_8U);
    cv::polylines(
        correction.stroke, wayThrough(middleOf(worse.pixels)), false, cv::Scalar(255), brush);
    correction.stroke &= worse.pixels; // nobody paints over what is right
    return correction;
}

} // namespace zk::bench
