// Not public: what is done to a matte before anything is painted.
#pragma once

#include "ContourField_p.h"
#include "ZkLook.h"

#include <opencv2/core.hpp>

namespace zk::effects {

// The smallest box around everything that is not 0.
cv::Rect boxOf(const cv::Mat &alpha);

// The box grown by `reach` px on all sides, inside the frame. Its borders lie on multiples of 4 px
// where the frame allows: renderers that work on a half-size copy then see the same pixel pairs
// wherever the object is.
cv::Rect regionAround(const cv::Rect &box, double reach, const cv::Size &frame);

// How smooth a contour is wanted, in contour points.
double contourSmoothing(double scale);

// matte: CV_8UC1. scale: px per px of a frame that is 1080 high. The result may be the same Mat.
cv::Mat withSettings(const cv::Mat &matte, const MatteSettings &settings, double scale);

// Takes the background's colour out of half-covered pixels: they get nearer to what fully covered
// pixels around them have. object: CV_8UC4 with its final alpha.
void decontaminate(cv::Mat &object, double strength, double scale);

} // namespace zk::effects
