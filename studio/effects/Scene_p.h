// Not public: what a layer's renderer sees of one frame.
#pragma once

#include "ContourField_p.h"

#include <QtGlobal>

#include <opencv2/core.hpp>

#include <cmath>

namespace zk::effects {

// All pictures cover the same region of the frame: the object's box grown by what the layers reach.
struct Scene
{
    cv::Mat alpha; // CV_8UC1: matte times the frame's alpha
    cv::Mat object; // CV_8UC4, straight, after the layers that treat the object's pixels; where
        // alpha is 0 the frame's colours are still there, for filters to look at
    cv::Rect region; // px of the frame
    cv::Rect box; // of the object, px of the region
    double scale = 1; // px per px of a frame that is 1080 high
    double time = 0; // seconds
    const ContourField *contour = nullptr; // set where a layer said that it needs it

    double px(double length) const { return length * scale; }
    int wholePx(double length) const { return static_cast<int>(std::lround(length * scale)); }
    // Counts up `rate` times per second; a rate of 0 stands still.
    quint32 tick(double rate) const
    {
        return static_cast<quint32>(static_cast<qint64>(std::floor(time * rate + 1e-6)));
    }
};

} // namespace zk::effects
