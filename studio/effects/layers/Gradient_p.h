// Not public: the colour of an outline at every pixel.
#pragma once

#include "../Pixels_p.h"
#include "../Scene_p.h"
#include "ZkLayers.h"

#include <array>

namespace zk::effects {

class Gradient
{
public:
    Gradient(const OutlineLayer &layer, const Scene &scene);

    Rgba at(int x, int y) const { return m_isPlain ? m_steps[0] : m_steps[stepAt(x, y)]; }

private:
    static constexpr std::size_t stepCount = 512;

    void fillSteps(const OutlineLayer &layer);
    std::size_t stepAt(int x, int y) const;

    std::array<Rgba, stepCount> m_steps {};
    bool m_isPlain;
    bool m_isAround;
    float m_angle; // radians
    cv::Point2f m_middle;
    cv::Point2f m_direction; // unit step along a linear gradient, in gradient lengths per pixel
};

} // namespace zk::effects
