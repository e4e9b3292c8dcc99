#include "ContourTrace_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zk::effects {

namespace {

constexpr float none = std::numeric_limits<float>::infinity();

// How far from p the level is crossed on the way to the neighbour, 0..1; none when it is not.
float crossing(const cv::Mat &alpha, const cv::Point &p, const cv::Point &step)
{
    const cv::Point q = p + step;
    if (!cv::Rect({}, alpha.size()).contains(q) || alpha.at<uchar>(q) >= contourLevel)
        return none;
    const float inside = alpha.at<uchar>(p);
    return (inside - contourLevel + 0.5F) / (inside - alpha.at<uchar>(q));
}

// The crossings on both sides along one axis as one offset; 0 where the object is one pixel thin.
float offsetAlong(const cv::Mat &alpha, const cv::Point &p, const cv::Point &step)
{
    const float forward = crossing(alpha, p, step);
    const float backward = crossing(alpha, p, -step);
    if (forward != none && backward != none)
        return 0;
    return forward != none ? forward : -backward;
}

// The foot of the perpendicular from the pixel onto the edge that the crossings lie on.
cv::Point2f onEdge(const cv::Mat &alpha, const cv::Point &p)
{
    const cv::Point2f at(p);
    const float x = offsetAlong(alpha, p, {1, 0});
    const float y = offsetAlong(alpha, p, {0, 1});
    if (std::isinf(x) && std::isinf(y))
        return at;
    if (std::isinf(x))
        return at + cv::Point2f(0, y);
    if (std::isinf(y))
        return at + cv::Point2f(x, 0);
    const float sum = x * x + y * y;
    return sum > 0 ? at + cv::Point2f(x * y * y, y * x * x) * (1 / sum) : at;
}

void smooth(std::vector<cv::Point2f> &points, double sigma)
{
    const int count = static_cast<int>(points.size());
    const int radius = std::min(static_cast<int>(std::ceil(2.5 * sigma)), (count - 1) / 4);
    if (radius < 1)
        return;
    const cv::Mat kernel = cv::getGaussianKernel(2 * radius + 1, sigma, CV_32F);
    std::vector<cv::Point2f> result(points.size());
    for (int i = 0; i < count; ++i) {
        cv::Point2f sum;
        for (int k = -radius; k <= radius; ++k)
            sum += points[static_cast<std::size_t>((i + k + count) % count)]
                * kernel.at<float>(k + radius);
        result[static_cast<std::size_t>(i)] = sum;
    }
    points.swap(result);
}

// Lengths along the contour begin straight above its middle: the topmost point, where tracing begins,
// leaps from frame to frame, and dashes would leap with it.
int startOf(const std::vector<cv::Point2f> &points)
{
    cv::Point2f middle;
    for (const cv::Point2f &point : points)
        middle += point * (1 / static_cast<float>(points.size()));
    int start = 0;
    float top = none;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (std::abs(points[i].x - middle.x) <= 1 && points[i].y < top) {
            top = points[i].y;
            start = static_cast<int>(i);
        }
    }
    return start;
}

void append(const std::vector<cv::Point2f> &line, std::vector<ContourPoint> *points)
{
    const int first = static_cast<int>(points->size());
    const int count = static_cast<int>(line.size());
    const int start = startOf(line);
    float arc = 0;
    for (int i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>((start + i) % count);
        const auto next = static_cast<std::size_t>((start + i + 1) % count);
        ContourPoint point;
        point.at = line[index];
        point.previous = first + (i + count - 1) % count;
        point.next = first + (i + 1) % count;
        point.arc = arc;
        points->push_back(point);
        arc += static_cast<float>(cv::norm(line[next] - line[index]));
    }
    for (auto point = points->begin() + first; point != points->end(); ++point)
        point->length = arc;
}

} // namespace

std::vector<ContourPoint> traceContours(const cv::Mat &alpha, double smoothing)
{
    std::vector<std::vector<cv::Point>> outlines;
    cv::findContours(alpha >= contourLevel, outlines, cv::RETR_LIST, cv::CHAIN_APPROX_NONE);
    std::vector<ContourPoint> points;
    std::vector<cv::Point2f> line;
    for (const std::vector<cv::Point> &outline : outlines) {
        line.clear();
        for (const cv::Point &pixel : outline)
            line.push_back(onEdge(alpha, pixel));
        smooth(line, smoothing);
        append(line, &points);
    }
    return points;
}

} // namespace zk::effects
