// Footage that is drawn by chance, to track objects in. Nothing in the engine was fitted to it.
#pragma once

#include "ZkDrawnTextures.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace zk::bench {

// An object turns, grows or shrinks and bends before a landscape that a shaky camera pans over. By the
// number of the scene it also
//     0 has limbs that swing,
//     1 passes behind posts that belong to the landscape,
//     2 meets another object in its own colours,
//     3 is partly in the landscape's colours,
//     4 moves faster, with thin limbs,
// then again from the start. The shutter is open for half of the time between two frames.
class DrawnFootage
{
public:
    explicit DrawnFootage(int number);

    std::string name() const;
    static constexpr int count = 40; // frames
    cv::Mat frame(int index) const; // CV_8UC3, R, G, B
    cv::Mat mask(int index) const; // CV_8UC1, what is seen of the object

private:
    enum class Kind { Limbs, Posts, Twin, Alike, Fast };

    struct Limb
    {
        double angle; // degrees, where it rests
        double length; // pixels
        int width; // pixels
        double swing; // degrees
        double phase;
    };

    struct Actor
    {
        cv::Mat texture;
        cv::Size body; // half axes, pixels
        std::vector<Limb> limbs;
        cv::Vec2d start; // from the middle of the frame
        cv::Vec2d motion; // pixels per frame
        double turn; // degrees per frame
        double growth; // share per frame
        double bend; // pixels
    };

    struct Layer
    {
        cv::Mat color; // CV_32FC3
        cv::Mat share; // CV_32FC1
    };

    Actor anyActor(const Palette &palette, cv::RNG &random) const;
    cv::Matx23d camera(double time) const;
    cv::Mat outlineOf(const Actor &actor, double time) const;
    Layer layerOf(const Actor &actor, double time) const;
    cv::Mat posts(double time) const;
    cv::Mat scene(double time) const;

    Kind m_kind;
    int m_number;
    cv::Mat m_landscape; // larger than the frame
    cv::Mat m_postShare; // as large as the landscape
    cv::Mat m_postColor;
    cv::Vec2d m_pan; // pixels per frame
    double m_shake; // pixels
    double m_light; // share by which the light changes
    std::vector<Actor> m_actors; // the last one is the object
    std::uint64_t m_grain;
};

} // namespace zk::bench
