#include "Gradient_p.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

// From 0 to 1 over the colours. One around the object ends with the colour that it begins with.
Rgba mixed(const QVector<QColor> &colours, float position, bool closed, double opacity)
{
    const int pieces = closed ? colours.size() : colours.size() - 1;
    const float along = position * static_cast<float>(pieces);
    const int first = std::min(static_cast<int>(along), pieces - 1);
    const Rgba from = toRgba(colours.at(first), opacity);
    const Rgba to = toRgba(colours.at((first + 1) % colours.size()), opacity);
    const float t = along - static_cast<float>(first);
    Rgba result;
    for (int c = 0; c < 4; ++c)
        result[c] = toByte(static_cast<float>(from[c]) * (1 - t) + static_cast<float>(to[c]) * t);
    return result;
}

} // namespace

Gradient::Gradient(const OutlineLayer &layer, const Scene &scene)
    : m_isPlain(layer.colours.size() < 2)
    , m_isAround(layer.gradient == OutlineLayer::Gradient::Around)
    , m_angle(static_cast<float>(
          qDegreesToRadians(std::fmod(layer.angle + layer.spin * scene.time, 360.0))))
    , m_middle(static_cast<float>(scene.box.x) + static_cast<float>(scene.box.width - 1) / 2,
               static_cast<float>(scene.box.y) + static_cast<float>(scene.box.height - 1) / 2)
{
    const cv::Point2f along(std::cos(m_angle), std::sin(m_angle));
    const float length = std::abs(along.x) * static_cast<float>(scene.box.width)
        + std::abs(along.y) * static_cast<float>(scene.box.height);
    m_direction = along * (1 / std::max(length, 1.0F));
    fillSteps(layer);
}

void Gradient::fillSteps(const OutlineLayer &layer)
{
    if (layer.colours.isEmpty())
        return;
    if (m_isPlain) {
        m_steps[0] = toRgba(layer.colours.first(), layer.opacity);
        return;
    }
    for (std::size_t i = 0; i < stepCount; ++i)
        m_steps[i] = mixed(layer.colours,
                           static_cast<float>(i) / static_cast<float>(stepCount - 1),
                           m_isAround,
                           layer.opacity);
}

std::size_t Gradient::stepAt(int x, int y) const
{
    const cv::Point2f away = cv::Point2f(static_cast<float>(x), static_cast<float>(y)) - m_middle;
    float position = 0;
    if (m_isAround) {
        const float turns = (std::atan2(away.y, away.x) - m_angle) / static_cast<float>(CV_2PI);
        position = turns - std::floor(turns);
    } else {
        position = clamped(away.dot(m_direction) + 0.5F);
    }
    return static_cast<std::size_t>(position * static_cast<float>(stepCount - 1));
}

} // namespace zk::effects
