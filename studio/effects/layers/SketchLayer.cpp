#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::effects {

namespace {

// How much thinner than its full width a stroke gets where the hand presses less.
constexpr float pressure = 0.45F;

// No hand follows every notch; px at 1080.
constexpr double roundness = 5;

// Where a stroke is at one point of the line that it follows.
struct StrokePoint
{
    float stray = 0; // px outwards
    float half = 0; // half its width, px
};

class Strokes
{
public:
    Strokes(const SketchLayer &layer, const Scene &scene)
        : m_line(scene.contour->offsetBy(scene.px(layer.offset + layer.width / 2),
                                         scene.px(roundness),
                                         scene.px(layer.wobble + layer.width / 2) + 2))
        , m_widest(static_cast<float>(scene.px(layer.wobble + layer.width / 2) + 1))
    {
        const quint32 seed = scene.tick(layer.rate);
        for (int i = 0; i < layer.strokes; ++i)
            m_strokes.push_back(strokeOf(layer, scene, hashed(seed, static_cast<quint32>(i))));
    }

    float coverage(int x, int y) const
    {
        const float distance = m_line.distance().at<float>(y, x);
        const int point = m_line.nearestPoint(x, y);
        if (point < 0 || std::abs(distance) > m_widest)
            return 0;
        float most = 0;
        for (const std::vector<StrokePoint> &stroke : m_strokes) {
            const StrokePoint &at = stroke[static_cast<std::size_t>(point)];
            most = std::max(most, clamped(at.half - std::abs(distance - at.stray) + 0.5F));
        }
        return most;
    }

private:
    std::vector<StrokePoint>
    strokeOf(const SketchLayer &layer, const Scene &scene, quint32 seed) const
    {
        const float wobble = static_cast<float>(scene.px(layer.wobble));
        const float half = static_cast<float>(scene.px(layer.width / 2));
        const float waveLength = static_cast<float>(scene.px(layer.waveLength));
        std::vector<StrokePoint> stroke;
        stroke.reserve(m_line.points().size());
        for (const ContourPoint &point : m_line.points()) {
            const float length = std::max(point.length, 1.0F);
            const int waves = std::max(3, static_cast<int>(std::round(length / waveLength)));
            const float along = point.arc / length * static_cast<float>(waves);
            const float stray =
                0.75F * wave(along, waves, seed) + 0.25F * wave(along * 3, waves * 3, seed + 1);
            const float press = 0.5F + 0.5F * wave(along * 2, waves * 2, seed + 2);
            stroke.push_back({wobble * stray, half * (1 - pressure * press)});
        }
        return stroke;
    }

    ContourField m_line;
    std::vector<std::vector<StrokePoint>> m_strokes;
    float m_widest;
};

} // namespace

double contourReachOf(const SketchLayer &layer, double scale)
{
    return (std::abs(layer.offset) + layer.width + layer.wobble) * scale
        + blurReach(roundness * scale) + 2;
}

double reachOf(const SketchLayer &layer, double scale, double)
{
    return contourReachOf(layer, scale);
}

void paint(const SketchLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const Strokes strokes(layer, scene);
    const Rgba colour = toRgba(layer.colour, layer.opacity);
    shade(canvas, [&](int x, int y) {
        const float coverage = strokes.coverage(x, y);
        return coverage > 0 ? covered(colour, coverage) : Rgba();
    });
}

} // namespace zk::effects
