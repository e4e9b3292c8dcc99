#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "Line_p.h"

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

constexpr double wide = 0.4; // of the radius, as standard deviation
constexpr double narrow = 0.12;

// The light of a thin line, blurred: 1 on a straight line's middle whatever its width.
cv::Mat lightOf(const cv::Mat &line, double sigma, double width)
{
    cv::Mat light = blurred(line, sigma);
    const double peak = std::min(1.0, width / (sigma * std::sqrt(CV_2PI)));
    light.convertTo(light, CV_32F, 1 / (65535 * std::max(peak, 1e-3)));
    return light;
}

float brightness(const NeonLayer &layer, double time)
{
    const double beat = 0.5 - 0.5 * std::cos(CV_2PI * layer.pulse * time);
    return static_cast<float>(1 - layer.pulseDepth * beat);
}

} // namespace

double reachOf(const NeonLayer &layer, double scale, double)
{
    return (std::abs(layer.offset) + layer.width) * scale + 2
        + std::max(blurReach(layer.roundness * scale), 0) + blurReach(wide * layer.radius * scale);
}

void paint(const NeonLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat distance = scene.contour->roundedDistance(scene.px(layer.roundness));
    LineBand band;
    band.inner = static_cast<float>(scene.px(layer.offset));
    band.outer = static_cast<float>(scene.px(layer.offset + layer.width));
    band.softness = static_cast<float>(std::max(1.0, scene.px(layer.width) * 0.5));
    cv::Mat line(canvas.size(), CV_8U);
    forEachRow(canvas.rows, [&](int y) {
        for (int x = 0; x < line.cols; ++x)
            line.at<uchar>(y, x) = toByte(255 * band.coverage(distance.at<float>(y, x)));
    });

    const double width = std::max(1.0, scene.px(layer.width));
    const cv::Mat far = lightOf(line, std::max(1.0, scene.px(wide * layer.radius)), width);
    const cv::Mat near = lightOf(line, std::max(0.7, scene.px(narrow * layer.radius)), width);
    const Rgba halo = toRgba(layer.halo);
    const Rgba core = toRgba(layer.core);
    const float beat = brightness(layer, scene.time);
    const float strength = static_cast<float>(layer.strength) * beat;
    shade(canvas, [&](int x, int y) {
        const float light = 0.55F * far.at<float>(y, x) + 0.9F * near.at<float>(y, x);
        Rgba pixel = covered(halo, light > 0 ? 1 - std::exp(-strength * light) : 0);
        const uchar tube = line.at<uchar>(y, x);
        if (tube)
            blendOver(pixel, covered(core, static_cast<float>(tube) / 255 * (0.4F + 0.6F * beat)));
        return pixel;
    });
}

} // namespace zk::effects
