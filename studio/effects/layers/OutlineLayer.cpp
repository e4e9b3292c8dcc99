#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "Gradient_p.h"
#include "Line_p.h"

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

// A line that touches the object goes on under its soft edge, or the background would show between.
constexpr double underlap = 6;

// The dashes of one layer. Distances across the line are measured from its middle.
class Dashes
{
public:
    Dashes(const OutlineLayer &layer, const Scene &scene)
        : m_contour(*scene.contour)
        , m_dash(static_cast<float>(scene.px(layer.dash)))
        , m_period(static_cast<float>(scene.px(layer.dash + layer.gap)))
        , m_moved(static_cast<float>(std::fmod(scene.px(layer.march) * scene.time, 1e6)))
    { }

    float coverage(int x, int y) const
    {
        const ContourPlace place = m_contour.placeOf(x, y);
        if (place.length < 2 * m_period)
            return 1; // a speck: too short for dashes
        // As many dashes as fit, a little longer or shorter, so that the last meets the first.
        const float period = place.length / std::round(place.length / m_period);
        const float dash = m_dash * period / m_period;
        const float position = place.arc - m_moved;
        const float inPeriod = position - std::floor(position / period) * period;
        const float fromMiddle = std::abs(inPeriod - period / 2);
        return clamped(dash / 2 - fromMiddle + 0.5F);
    }

private:
    const ContourField &m_contour;
    float m_dash;
    float m_period;
    float m_moved;
};

bool isDashed(const OutlineLayer &layer)
{
    return layer.dash > 0 && layer.gap > 0;
}

LineBand bandOf(const OutlineLayer &layer, const Scene &scene)
{
    LineBand band;
    const bool touches = layer.offset <= 0 && layer.offset + layer.width > 0 && !isDashed(layer);
    band.inner = static_cast<float>(scene.px(touches ? layer.offset - underlap : layer.offset));
    band.outer = static_cast<float>(scene.px(layer.offset + layer.width));
    band.softness = static_cast<float>(std::max(1.0, scene.px(layer.softness)));
    return band;
}

} // namespace

double reachOf(const OutlineLayer &layer, double scale, double)
{
    const double far =
        std::max(std::abs(layer.offset) + underlap, std::abs(layer.offset + layer.width));
    return (far + layer.softness) * scale + blurReach(layer.roundness * scale) + 2;
}

void paint(const OutlineLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat distance = scene.contour->roundedDistance(scene.px(layer.roundness));
    const LineBand band = bandOf(layer, scene);
    const Dashes dashes(layer, scene);
    const bool dashed = isDashed(layer);
    const Gradient gradient(layer, scene);
    shade(canvas, [&](int x, int y) {
        float coverage = band.coverage(distance.at<float>(y, x));
        if (coverage > 0 && dashed)
            coverage *= dashes.coverage(x, y);
        return coverage > 0 ? covered(gradient.at(x, y), coverage) : Rgba();
    });
}

} // namespace zk::effects
