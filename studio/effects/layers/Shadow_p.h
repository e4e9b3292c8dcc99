// Not public: the shadow that a shape throws.
#pragma once

#include "../Pixels_p.h"

#include <algorithm>
#include <cstdlib>

namespace zk::effects {

// How far a shadow blurs and falls; px of the frame.
struct ShadowCast
{
    int dx = 0;
    int dy = 0;
    double blur = 0; // from full to nothing

    double sigma() const { return blur / 2.5; }
    double reach() const { return std::max(std::abs(dx), std::abs(dy)) + blurReach(sigma()) + 1; }
};

// shape: CV_8UC1 of the canvas's size.
void paintShadow(const cv::Mat &shape, const ShadowCast &cast, const Rgba &colour, cv::Mat &canvas);

} // namespace zk::effects
