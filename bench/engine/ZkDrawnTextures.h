// Pictures by chance, from which scenes are drawn.
#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <cstdint>

namespace zk::bench {

inline const cv::Size drawnSize(640, 360); // of the frames of drawn scenes

using Palette = std::array<cv::Scalar, 3>; // of 0 .. 255

Palette anyPalette(cv::RNG &random);

// Patches of the three colours with soft and hard borders, the largest about coarse pixels wide. CV_32FC3.
cv::Mat texture(const cv::Size &size, const Palette &palette, double coarse, cv::RNG &random);

// b where share (CV_32FC1) is 1, a where it is 0; CV_32FC3.
cv::Mat mixed(const cv::Mat &a, const cv::Mat &b, const cv::Mat &share);

// 0 .. 255 to 0 .. 1, CV_32FC1.
cv::Mat asShare(const cv::Mat &mask);

// The drawn size with so many pixels more on every side.
cv::Size withRoom(int pixels);

// A picture of 0 .. 255, CV_32FC3, as a camera takes it: CV_8UC3 with grain, another one for every number.
cv::Mat photograph(const cv::Mat &picture, std::uint64_t number);

// A vector with a length of least .. most.
cv::Vec2d anyWay(cv::RNG &random, double least, double most);

} // namespace zk::bench
