#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "Line_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::effects {

namespace {

constexpr double wide = 0.4; // of the radius, as standard deviation
constexpr double narrow = 0.12;

// What a blurred thin line is multiplied with to be 1 on the middle of a straight one, whatever its
// width.
float gainOf(double sigma, double width)
{
    const double peak = std::min(1.0, width / (sigma * std::sqrt(CV_2PI)));
    return static_cast<float>(1 / (65535 * std::max(peak, 1e-3)));
}

float brightness(const NeonLayer &layer, double time)
{
    const double beat = 0.5 - 0.5 * std::cos(CV_2PI * layer.pulse * time);
    return static_cast<float>(1 - layer.pulseDepth * beat);
}

// 1 - exp(-light) for light of 0..8, which is as good as full.
class Saturation
{
public:
    Saturation()
    {
        for (std::size_t i = 0; i < m_steps.size(); ++i)
            m_steps[i] = 1 - std::exp(-static_cast<float>(i) / stepsPerUnit);
    }
    float of(float light) const
    {
        const int step = static_cast<int>(light * stepsPerUnit);
        return m_steps[static_cast<std::size_t>(std::min(std::max(step, 0), stepCount - 1))];
    }

private:
    static constexpr int stepCount = 4096;
    static constexpr float stepsPerUnit = stepCount / 8.0F;
    std::array<float, stepCount> m_steps {};
};

} // namespace

double contourReachOf(const NeonLayer &layer, double scale)
{
    return (std::abs(layer.offset) + layer.width * 1.5) * scale + blurReach(layer.roundness * scale)
        + 2;
}

double reachOf(const NeonLayer &layer, double scale, double)
{
    return contourReachOf(layer, scale) + blurReach(wide * layer.radius * scale);
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
    const double farSigma = std::max(1.0, scene.px(wide * layer.radius));
    const double nearSigma = std::max(0.7, scene.px(narrow * layer.radius));
    const cv::Mat wideBlur = blurred(line, farSigma);
    const cv::Mat narrowBlur = blurred(line, nearSigma);
    const Rgba halo = toRgba(layer.halo);
    const Rgba core = toRgba(layer.core);
    const float beat = brightness(layer, scene.time);
    const float strength = static_cast<float>(layer.strength) * beat;
    const float farGain = 0.55F * strength * gainOf(farSigma, width);
    const float nearGain = 0.9F * strength * gainOf(nearSigma, width);
    const Saturation saturation;
    shade(canvas, [&](int x, int y) {
        const float light =
            farGain * wideBlur.at<ushort>(y, x) + nearGain * narrowBlur.at<ushort>(y, x);
        if (light <= 0)
            return Rgba();
        Rgba pixel = covered(halo, saturation.of(light));
        const uchar tube = line.at<uchar>(y, x);
        if (tube)
            blendOver(pixel, covered(core, static_cast<float>(tube) / 255 * (0.4F + 0.6F * beat)));
        return pixel;
    });
}

} // namespace zk::effects
