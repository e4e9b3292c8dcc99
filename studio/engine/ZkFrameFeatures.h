// What a pixel looks like: the small working copy of a frame and the features of each of its pixels.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

struct FeatureOptions
{
    int workingPixels = 427 * 240; // area of the working copy; smaller frames are taken as they are
};

// The rows of FrameFeatures::planes. Values that can be negative are stored around 128.
namespace Feature {
constexpr int color = 0; // L, a, b
constexpr int fine = 3; // L, a, b, slightly blurred
constexpr int middle = 6; // L, a, b over about 9 pixels
constexpr int coarse = 9; // L, a, b over about 25 pixels
constexpr int deviation = 12; // of L over 5 and 13 pixels, of a and b over 9
constexpr int gradient = 16; // of L: fine and coarse strength, then coarse x and y
constexpr int around = 20; // L, a, b at 4 places 4 pixels away, then at 4 places 9 pixels away
constexpr int count = 44;
// Behind these, when the motion is known: own motion to up to two other frames, x and y.
constexpr int motion = count;
constexpr int countWithMotion = motion + 4;
} // namespace Feature

struct FrameFeatures
{
    cv::Mat lab; // CV_8UC3, working size, L a b
    cv::Mat planes; // CV_8UC1: one row per feature, one column per pixel of the working copy

    cv::Size size() const { return lab.size(); }
    cv::Mat plane(int feature) const; // a view of one feature as an image
};

// The size of the working copy of a frame of this size: the same shape, at least 1 x 1.
ZKENGINE_EXPORT cv::Size workingSize(const cv::Size &frame, int workingPixels);

// A CV_8UC3 copy of a frame (R, G, B or R, G, B, A) at a smaller or equal size.
ZKENGINE_EXPORT cv::Mat shrunkFrame(const cv::Mat &frame, const cv::Size &size);

// motions: ownMotion() of this picture to up to two others, any size; further ones are left out.
ZKENGINE_EXPORT void addMotion(FrameFeatures *features, const std::vector<cv::Mat> &motions);

ZKENGINE_EXPORT FrameFeatures computeFeatures(const cv::Mat &frame,
                                              const FeatureOptions &options = {});

} // namespace zk::engine
