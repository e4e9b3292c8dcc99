#include "ContourField_p.h"

#include "ContourTrace_p.h"
#include "Pixels_p.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace zk::effects {

namespace {

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

ContourField::ContourField(const cv::Mat &alpha,
                           double reach,
                           double smoothing,
                           const CutSides &cut)
    : m_reach(reach)
{
    const int pad = static_cast<int>(std::ceil(reach)) + 4;
    const cv::Rect visible(cut.left ? pad : 0, cut.top ? pad : 0, alpha.cols, alpha.rows);
    cv::Mat padded = alpha;
    if (cut.left || cut.top || cut.right || cut.bottom)
        cv::copyMakeBorder(alpha,
                           padded,
                           visible.y,
                           cut.bottom ? pad : 0,
                           visible.x,
                           cut.right ? pad : 0,
                           cv::BORDER_REPLICATE);
    m_points = traceContours(padded, smoothing);
    measure(padded, visible);
}

void ContourField::measure(const cv::Mat &alpha, const cv::Rect &visible)
{
    m_nearest = cv::Mat(visible.size(), CV_32S, cv::Scalar(-1));
    if (m_points.empty()) {
        m_distance = cv::Mat(visible.size(), CV_32F, cv::Scalar(m_reach + 1e4));
        m_distance.setTo(-m_reach - 1e4, alpha(visible) >= contourLevel);
        return;
    }
    cv::Mat seeds(alpha.size(), CV_8U, cv::Scalar(255));
    for (const ContourPoint &point : m_points)
        seeds.at<uchar>(point.pixel) = 0;
    cv::Mat rough;
    cv::Mat labels;
    cv::distanceTransform(seeds, rough, labels, cv::DIST_L2, cv::DIST_MASK_5, cv::DIST_LABEL_PIXEL);

    std::vector<int> pointOfLabel(m_points.size() + 1, 0);
    for (std::size_t i = 0; i < m_points.size(); ++i)
        pointOfLabel[static_cast<std::size_t>(labels.at<int>(m_points[i].pixel))] =
            static_cast<int>(i);
    for (ContourPoint &point : m_points)
        point.at -= cv::Point2f(visible.tl());

    m_distance.create(visible.size(), CV_32F);
    forEachRow(visible.height,
               [&](int y) { measureRow(alpha, visible, rough, labels, pointOfLabel, y); });
}

// The labelled transform names a contour point that is the nearest one or close to it; walking along
// the contour from there gives the exact one.
void ContourField::measureRow(const cv::Mat &alpha,
                              const cv::Rect &visible,
                              const cv::Mat &rough,
                              const cv::Mat &labels,
                              const std::vector<int> &pointOfLabel,
                              int y)
{
    const uchar *inside = alpha.ptr<uchar>(y + visible.y) + visible.x;
    const float *roughRow = rough.ptr<float>(y + visible.y) + visible.x;
    const int *labelRow = labels.ptr<int>(y + visible.y) + visible.x;
    const float limit = static_cast<float>(m_reach * 1.03 + 2); // the transform errs by 2 %
    for (int x = 0; x < visible.width; ++x) {
        float distance = roughRow[x];
        if (distance <= limit) {
            const cv::Point2f at(static_cast<float>(x), static_cast<float>(y));
            const int index = nearestFrom(pointOfLabel[static_cast<std::size_t>(labelRow[x])], at);
            distance = std::sqrt(squaredLength(at - footOf(index, at)));
            m_nearest.at<int>(y, x) = index;
        }
        m_distance.at<float>(y, x) = inside[x] >= contourLevel ? -distance : distance;
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
    cv::Mat bounded = cv::min(cv::max(m_distance, -m_reach), m_reach);
    return blurred(bounded, sigma);
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
