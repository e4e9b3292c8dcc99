#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

// Light falls off steeply first and then slowly: a narrow and a wide blur together.
constexpr double wide = 0.36; // of the radius, as standard deviation
constexpr double narrow = 0.11;

} // namespace

double reachOf(const GlowLayer &layer, double scale, double)
{
    return blurReach(wide * layer.radius * scale) + 1;
}

void paint(const GlowLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat far = blurred(scene.alpha, scene.px(wide * layer.radius));
    const cv::Mat near = blurred(scene.alpha, scene.px(narrow * layer.radius));
    const Rgba colour = toRgba(layer.colour);
    const float strength = static_cast<float>(layer.strength);
    shade(canvas, [&](int x, int y) {
        // 1 at the contour, where each blur has a half.
        float light = static_cast<float>(far.at<ushort>(y, x) + near.at<ushort>(y, x)) / 65535;
        float limit = 1;
        if (layer.inner) {
            light = 2 - light;
            limit = static_cast<float>(scene.alpha.at<uchar>(y, x)) / 255;
        }
        const float dark = 1 - clamped(light);
        const float coverage = strength >= 1 ? 1 - std::pow(dark, strength) : strength * (1 - dark);
        return covered(colour, coverage * limit);
    });
}

} // namespace zk::effects
