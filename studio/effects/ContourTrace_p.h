// Not public: from a soft matte to closed lines of sub-pixel points.
#pragma once

#include "ContourField_p.h"

namespace zk::effects {

constexpr int contourLevel = 128; // the object is where alpha is at least this

// Every closed line along which alpha crosses contourLevel, holes included, with about one point per
// pixel. smoothing: standard deviation, in points, of the smoothing along the line.
std::vector<ContourPoint> traceContours(const cv::Mat &alpha, double smoothing);

} // namespace zk::effects
