// Scenes that are drawn by chance: a textured object moves before a textured landscape. Nothing in the
// engine was fitted to them.
#pragma once

#include <opencv2/core.hpp>

#include <cstdint>

namespace zk::bench {

enum class ObjectKind {
    Compact,
    Limbs, // with background between them
    Alike, // compact, partly in a colour of the landscape
};

class DrawnScene
{
public:
    DrawnScene(ObjectKind kind, std::uint64_t seed);

    // Frames count from 0; the ones before are there, too. CV_8UC3, R, G, B.
    cv::Mat frame(int index) const;
    cv::Mat mask(int index) const; // CV_8UC1, soft at the outline

private:
    cv::Mat shapeOf(ObjectKind kind, cv::RNG &random) const;

    cv::Mat m_landscape; // larger than the frame, the camera pans over it
    cv::Mat m_object; // as large as the frame, in its middle
    cv::Mat m_shape;
    cv::Vec2d m_pan; // pixels per frame
    cv::Vec2d m_motion;
    double m_turn; // degrees per frame
    std::uint64_t m_grain;
};

} // namespace zk::bench
