#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::effects {

namespace {

// Light falls off steeply first and then slowly: a narrow and a wide blur together.
constexpr double wide = 0.36; // of the radius, as standard deviation
constexpr double narrow = 0.11;

// What light of 0..1, in 1024 steps, covers. Above a strength of 1 it stays full for longer.
std::array<float, 1025> coverageSteps(double strength)
{
    std::array<float, 1025> steps {};
    for (int i = 0; i <= 1024; ++i) {
        const double light = i / 1024.0;
        steps[static_cast<std::size_t>(i)] = static_cast<float>(
            strength >= 1 ? 1 - std::pow(1 - light, strength) : strength * light);
    }
    return steps;
}

} // namespace

double reachOf(const GlowLayer &layer, double scale, double)
{
    return blurReach(wide * layer.radius * scale) + 1;
}

void paint(const GlowLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat wideBlur = blurred(scene.alpha, scene.px(wide * layer.radius));
    const cv::Mat narrowBlur = blurred(scene.alpha, scene.px(narrow * layer.radius));
    const Rgba colour = toRgba(layer.colour);
    const std::array<float, 1025> steps = coverageSteps(layer.strength);
    shade(canvas, [&](int x, int y) {
        // 65535 at the contour, where each blur has a half.
        int light = wideBlur.at<ushort>(y, x) + narrowBlur.at<ushort>(y, x);
        float limit = 1;
        if (layer.inner) {
            light = 2 * 65535 - light;
            limit = static_cast<float>(scene.alpha.at<uchar>(y, x)) / 255;
        }
        const auto step = static_cast<std::size_t>(std::min(light, 65535) * 1024 / 65535);
        return covered(colour, steps[step] * limit);
    });
}

} // namespace zk::effects
