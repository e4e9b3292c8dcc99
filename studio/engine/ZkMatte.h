// Helpers for frames and mattes, the two kinds of picture that the engine takes and gives.
//
// A frame is CV_8UC3 or CV_8UC4 in R, G, B(, A) order; alpha is ignored. A matte is CV_8UC1 of the
// size of its frame: 255 is object, 0 is background, values between are partly covered pixels of the
// outline, and the object is where the value is at least matteThreshold.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

namespace zk::engine {

constexpr int matteThreshold = 128;

// True for a non-empty CV_8UC3 or CV_8UC4 image.
ZKENGINE_EXPORT bool isFrame(const cv::Mat &image);

// True for a CV_8UC1 image of this size, which is not empty.
ZKENGINE_EXPORT bool isMatteOf(const cv::Mat &matte, const cv::Size &size);

// 255 where the matte is at least matteThreshold, 0 elsewhere.
ZKENGINE_EXPORT cv::Mat hardMatte(const cv::Mat &matte);

// Pixels of the object.
ZKENGINE_EXPORT int objectArea(const cv::Mat &matte);

// Share of common object pixels, 0 .. 1. Two empty objects agree entirely (1); mattes of different
// sizes or types, or no matte at all, give 0.
ZKENGINE_EXPORT double intersectionOverUnion(const cv::Mat &matteA, const cv::Mat &matteB);

} // namespace zk::engine
