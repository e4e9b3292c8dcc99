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

// The dashes of one layer along their own middle line.
class Dashes
{
public:
    Dashes(const OutlineLayer &layer, const Scene &scene)
        : m_line(scene.contour->offsetBy(scene.px(layer.offset + layer.width / 2),
                                         scene.px(layer.roundness),
                                         scene.px(layer.width / 2 + layer.softness) + 2))
        , m_dash(static_cast<float>(scene.px(layer.dash)))
        , m_period(static_cast<float>(scene.px(layer.dash + layer.gap)))
        , m_moved(static_cast<float>(std::fmod(scene.px(layer.march) * scene.time, 1e6)))
    {
        m_band.outer = static_cast<float>(scene.px(layer.width / 2));
        m_band.inner = -m_band.outer;
        m_band.softness = static_cast<float>(std::max(1.0, scene.px(layer.softness)));
    }

    float coverage(int x, int y) const
    {
        const float across = m_band.coverage(m_line.distance().at<float>(y, x));
        return across > 0 ? across * alongCoverage(m_line.placeOf(x, y)) : 0;
    }

private:
    float alongCoverage(const ContourPlace &place) const
    {
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

    ContourField m_line;
    LineBand m_band;
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
    const bool touches = layer.offset <= 0 && layer.offset + layer.width > 0;
    band.inner = static_cast<float>(scene.px(touches ? layer.offset - underlap : layer.offset));
    band.outer = static_cast<float>(scene.px(layer.offset + layer.width));
    band.softness = static_cast<float>(std::max(1.0, scene.px(layer.softness)));
    return band;
}

} // namespace

double contourReachOf(const OutlineLayer &layer, double scale)
{
    const double farthest =
        std::max(std::abs(layer.offset) + underlap, std::abs(layer.offset + layer.width));
    return (farthest + layer.softness) * scale + blurReach(layer.roundness * scale) + 2;
}

double reachOf(const OutlineLayer &layer, double scale, double)
{
    return contourReachOf(layer, scale);
}

void paint(const OutlineLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const Gradient gradient(layer, scene);
    const auto paintWith = [&](const auto &coverageAt) {
        shade(canvas, [&](int x, int y) {
            const float coverage = coverageAt(x, y);
            return coverage > 0 ? covered(gradient.at(x, y), coverage) : Rgba();
        });
    };
    if (isDashed(layer)) {
        const Dashes dashes(layer, scene);
        paintWith([&dashes](int x, int y) { return dashes.coverage(x, y); });
    } else {
        const cv::Mat distance = scene.contour->roundedDistance(scene.px(layer.roundness));
        const LineBand band = bandOf(layer, scene);
        paintWith([&](int x, int y) { return band.coverage(distance.at<float>(y, x)); });
    }
}

} // namespace zk::effects
