#include "ContourField_p.h"

#include "ContourTrace_p.h"
#include "Pixels_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zk::effects {

namespace {

// The line at a distance is smooth already.
constexpr double offsetSmoothing = 1;

// Up to this distance every point of the contour is looked at; px.
constexpr double nearRadius = 6;
// Smoothing moves the contour over pixels at corners. This near to it the side is told by the line
// itself, which has the object on its left; px.
constexpr float sideReach = 1.5F;
// Rows that are measured together, long enough that looking for their points is worth it.
constexpr int bandRows = 64;

bool touches(const cv::Mat &side)
{
    double most = 0;
    cv::minMaxLoc(side, nullptr, &most);
    return most >= contourLevel;
}

float squaredLength(const cv::Point2f &v)
{
    return v.dot(v);
}

cv::Point2f nearestOnSegment(const cv::Point2f &a, const cv::Point2f &b, const cv::Point2f &at)
{
    const cv::Point2f along = b - a;
    const float length = squaredLength(along);
    if (length <= 0)
        return a;
    return a + along * clamped((at - a).dot(along) / length);
}

} // namespace

ContourField::ContourField(const cv::Mat &alpha, double reach, double smoothing)
    : m_reach(reach)
{
    const int pad = static_cast<int>(std::ceil(reach)) + 4;
    const int left = touches(alpha.col(0)) ? pad : 0;
    const int top = touches(alpha.row(0)) ? pad : 0;
    const int right = touches(alpha.col(alpha.cols - 1)) ? pad : 0;
    const int bottom = touches(alpha.row(alpha.rows - 1)) ? pad : 0;
    cv::Mat padded = alpha;
    if (left + top + right + bottom > 0)
        cv::copyMakeBorder(alpha, padded, top, bottom, left, right, cv::BORDER_REPLICATE);
    m_points = traceContours(padded, smoothing);
    measure(alpha, {left, top});
}

ContourField ContourField::offsetBy(double distance, double roundness, double reach) const
{
    // A ramp of 4 px across the line, which places it to a 64th of a pixel.
    cv::Mat inside;
    roundedDistance(roundness).convertTo(inside, CV_8U, -64, contourLevel + 64 * distance);
    return ContourField(inside, reach, offsetSmoothing);
}

void ContourField::measure(const cv::Mat &alpha, const cv::Point &origin)
{
    for (ContourPoint &point : m_points)
        point.at -= cv::Point2f(origin);
    m_distance = cv::Mat(alpha.size(), CV_32F, cv::Scalar(std::numeric_limits<float>::max()));
    m_nearest = cv::Mat(alpha.size(), CV_32S, cv::Scalar(-1));
    const int bands = std::max(1, alpha.rows / bandRows);
    forEachRow(bands, [&](int band) {
        const cv::Range rows(alpha.rows * band / bands, alpha.rows * (band + 1) / bands);
        for (double radius = nearRadius, step = 1;; radius *= 3, step *= 3) {
            spreadPoints(rows, std::min(radius, m_reach), static_cast<int>(step));
            if (radius >= m_reach)
                break;
        }
        for (int y = rows.start; y < rows.end; ++y)
            finishRow(alpha.ptr<uchar>(y), y);
    });
}

// Every step-th point offers itself to the pixels around it. Far from the contour neighbours are
// nearly as near, so that fewer of them have to.
void ContourField::spreadPoints(const cv::Range &rows, double radius, int step)
{
    const float window = static_cast<float>(std::ceil(radius) + 1);
    for (int i = 0; i < static_cast<int>(m_points.size()); i += step) {
        const cv::Point2f &at = m_points[static_cast<std::size_t>(i)].at;
        const int top = std::max(rows.start, static_cast<int>(std::ceil(at.y - window)));
        const int bottom = std::min(rows.end - 1, static_cast<int>(std::floor(at.y + window)));
        const int left = std::max(0, static_cast<int>(std::ceil(at.x - window)));
        const int right = std::min(m_nearest.cols - 1, static_cast<int>(std::floor(at.x + window)));
        for (int y = top; y <= bottom; ++y) {
            float *best = m_distance.ptr<float>(y);
            int *nearest = m_nearest.ptr<int>(y);
            const float dy = static_cast<float>(y) - at.y;
            for (int x = left; x <= right; ++x) {
                const float dx = static_cast<float>(x) - at.x;
                const float squared = dx * dx + dy * dy;
                const bool isNearer = squared < best[x];
                best[x] = isNearer ? squared : best[x];
                nearest[x] = isNearer ? i : nearest[x];
            }
        }
    }
}

// The point that is known is the nearest one or close to it: walking along the contour from there
// gives the exact one.
void ContourField::finishRow(const uchar *alpha, int y)
{
    float *distances = m_distance.ptr<float>(y);
    int *nearest = m_nearest.ptr<int>(y);
    for (int x = 0; x < m_distance.cols; ++x) {
        float distance = static_cast<float>(m_reach);
        bool isInside = alpha[x] >= contourLevel;
        if (nearest[x] >= 0) {
            const cv::Point2f at(static_cast<float>(x), static_cast<float>(y));
            nearest[x] = nearestFrom(nearest[x], at);
            const cv::Point2f away = at - footOf(nearest[x], at);
            distance = std::sqrt(squaredLength(away));
            if (distance < sideReach)
                isInside = tangentAt(nearest[x]).cross(away) < 0;
        }
        distances[x] = isInside ? -distance : distance;
    }
}

int ContourField::nearestFrom(int index, const cv::Point2f &at) const
{
    const auto point = [this](int i) -> const ContourPoint & {
        return m_points[static_cast<std::size_t>(i)];
    };
    float best = squaredLength(at - point(index).at);
    const auto walk = [&](auto neighbour) {
        bool moved = false;
        for (int next = neighbour(index);; next = neighbour(index)) {
            const float candidate = squaredLength(at - point(next).at);
            if (candidate >= best)
                return moved;
            best = candidate;
            index = next;
            moved = true;
        }
    };
    if (!walk([&](int i) { return point(i).next; }))
        walk([&](int i) { return point(i).previous; });
    return index;
}

cv::Point2f ContourField::footOf(int index, const cv::Point2f &at) const
{
    const ContourPoint &point = m_points[static_cast<std::size_t>(index)];
    const cv::Point2f before = m_points[static_cast<std::size_t>(point.previous)].at;
    const cv::Point2f after = m_points[static_cast<std::size_t>(point.next)].at;
    const cv::Point2f first = nearestOnSegment(before, point.at, at);
    const cv::Point2f second = nearestOnSegment(point.at, after, at);
    return squaredLength(at - first) < squaredLength(at - second) ? first : second;
}

cv::Point2f ContourField::tangentAt(int index) const
{
    const ContourPoint &point = m_points[static_cast<std::size_t>(index)];
    const cv::Point2f along = m_points[static_cast<std::size_t>(point.next)].at
        - m_points[static_cast<std::size_t>(point.previous)].at;
    const float length = std::sqrt(squaredLength(along));
    return length > 0 ? along * (1 / length) : cv::Point2f();
}

cv::Mat ContourField::roundedDistance(double sigma) const
{
    if (sigma <= 0)
        return m_distance;
    // In 32nds of a pixel, 1024 px to either side, which blurs in half the time that floats take.
    cv::Mat fixed;
    m_distance.convertTo(fixed, CV_16U, 32, 32 * 1024);
    cv::Mat rounded;
    blurred(fixed, sigma).convertTo(rounded, CV_32F, 1.0 / 32, -1024);
    return rounded;
}

ContourPlace ContourField::placeOf(int x, int y) const
{
    const int index = m_nearest.at<int>(y, x);
    if (index < 0)
        return {};
    const ContourPoint &point = m_points[static_cast<std::size_t>(index)];
    const cv::Point2f away = cv::Point2f(static_cast<float>(x), static_cast<float>(y)) - point.at;
    // Half a step along the contour at most: beyond that the next point is the nearest one.
    const float along = std::max(-0.75F, std::min(0.75F, away.dot(tangentAt(index))));
    return {point.arc + along, point.length};
}

cv::Point2f ContourField::normalAt(int x, int y) const
{
    const int index = m_nearest.at<int>(y, x);
    if (index < 0)
        return {};
    const cv::Point2f at(static_cast<float>(x), static_cast<float>(y));
    const float distance = m_distance.at<float>(y, x);
    if (std::abs(distance) > 0.5F)
        return (at - footOf(index, at)) * (1 / distance);
    // Too close to the contour for a direction of its own: the way the distance grows around here.
    const auto at2 = [this](int px, int py) {
        return m_distance.at<float>(std::min(std::max(py, 0), m_distance.rows - 1),
                                    std::min(std::max(px, 0), m_distance.cols - 1));
    };
    const cv::Point2f slope(at2(x + 1, y) - at2(x - 1, y), at2(x, y + 1) - at2(x, y - 1));
    const float length = std::sqrt(squaredLength(slope));
    return length > 0 ? slope * (1 / length) : cv::Point2f();
}

} // namespace zk::effects
