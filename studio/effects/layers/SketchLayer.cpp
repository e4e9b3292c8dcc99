#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

// How much thinner than its full width a stroke gets where the hand presses less.
constexpr float pressure = 0.45F;

class Strokes
{
public:
    Strokes(const SketchLayer &layer, const Scene &scene)
        : m_count(layer.strokes)
        , m_seed(scene.tick(layer.rate))
        , m_offset(static_cast<float>(scene.px(layer.offset + layer.width / 2)))
        , m_half(static_cast<float>(scene.px(layer.width) / 2))
        , m_wobble(static_cast<float>(scene.px(layer.wobble)))
        , m_waveLength(static_cast<float>(scene.px(layer.waveLength)))
    { }

    bool isNear(float distance) const
    {
        return std::abs(distance - m_offset) < m_wobble + m_half + 1;
    }

    float coverage(const ContourPlace &place, float distance) const
    {
        if (place.length <= 0)
            return 0;
        const int waves = std::max(3, static_cast<int>(std::round(place.length / m_waveLength)));
        const float along = place.arc / place.length * static_cast<float>(waves);
        float most = 0;
        for (int stroke = 0; stroke < m_count; ++stroke)
            most = std::max(most, strokeCoverage(stroke, along, waves, distance));
        return most;
    }

private:
    float strokeCoverage(int stroke, float along, int waves, float distance) const
    {
        const quint32 seed = hashed(m_seed, static_cast<quint32>(stroke));
        const float stray =
            0.75F * wave(along, waves, seed) + 0.25F * wave(along * 3, waves * 3, seed + 1);
        const float press = 1 - pressure * (0.5F + 0.5F * wave(along * 2, waves * 2, seed + 2));
        const float across = std::abs(distance - m_offset - m_wobble * stray);
        return clamped(m_half * press - across + 0.5F);
    }

    int m_count;
    quint32 m_seed;
    float m_offset;
    float m_half;
    float m_wobble;
    float m_waveLength;
};

} // namespace

double reachOf(const SketchLayer &layer, double scale, double)
{
    return (std::abs(layer.offset) + layer.width + layer.wobble) * scale + 2;
}

void paint(const SketchLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat &distance = scene.contour->distance();
    const Strokes strokes(layer, scene);
    const Rgba colour = toRgba(layer.colour, layer.opacity);
    shade(canvas, [&](int x, int y) {
        const float away = distance.at<float>(y, x);
        if (!strokes.isNear(away))
            return Rgba();
        return covered(colour, strokes.coverage(scene.contour->placeOf(x, y), away));
    });
}

} // namespace zk::effects
