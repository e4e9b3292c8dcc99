// Not public: the object's contour, and for every pixel how far and along which part of it it lies.
//
// One field per frame serves all layers that follow the contour. The contour is where the matte
// crosses one half, found between the pixels and lightly smoothed, so that lines at a distance from
// it are free of stairs.
#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace zk::effects {

struct ContourPoint
{
    cv::Point2f at; // px of the region; pixel centres have whole numbers
    int previous = 0; // the contours are closed: neighbours as indices into the points
    int next = 0;
    float arc = 0; // px from the start of this contour
    float length = 0; // px of this whole contour
};

// Where along its contour a pixel lies.
struct ContourPlace
{
    float arc = 0;
    float length = 0;
};

class ContourField
{
public:
    // alpha: CV_8UC1, the region's part of the object. Distances are exact up to `reach` px, on both
    // sides; beyond it they are at least the reach. Where the object touches a side of the
    // region it counts as going on beyond it, and no line runs along that side. smoothing: along
    // the contour, in points.
    ContourField(const cv::Mat &alpha, double reach, double smoothing);

    // The field of the line that keeps this distance from the contour. Lengths along it are even
    // where those along the contour are squeezed into corners. roundness: see roundedDistance().
    ContourField offsetBy(double distance, double roundness, double reach) const;

    // CV_32FC1 of the region's size: px from the contour, negative inside the object.
    const cv::Mat &distance() const { return m_distance; }
    // The same with corners rounded; sigma in px.
    cv::Mat roundedDistance(double sigma) const;

    // Both only mean something within the reach.
    ContourPlace placeOf(int x, int y) const;
    // Index into points(), -1 where there is none.
    int nearestPoint(int x, int y) const { return m_nearest.at<int>(y, x); }
    // Unit vector away from the object, across the contour; 0,0 where there is none.
    cv::Point2f normalAt(int x, int y) const;

    const std::vector<ContourPoint> &points() const { return m_points; }

private:
    void measure(const cv::Mat &alpha, const cv::Point &origin);
    void spreadPoints(const cv::Range &rows, double radius, int step);
    void finishRow(const uchar *alpha, int y);
    int nearestFrom(int index, const cv::Point2f &at) const;
    cv::Point2f footOf(int index, const cv::Point2f &at) const;
    cv::Point2f tangentAt(int index) const;

    double m_reach;
    std::vector<ContourPoint> m_points;
    cv::Mat m_distance;
    cv::Mat m_nearest; // CV_32SC1: index into m_points, -1 beyond the reach
};

} // namespace zk::effects
