// Small operations on masks (CV_8UC1, non-zero = set) and mattes that several stages need. Not public.
#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

// Up to count indices (row by row) of set pixels, spread over all of them; the same for the same mask.
std::vector<int> sampledPixels(const cv::Mat &mask, int count);

// The connected parts of the mask that share a pixel with the anchors.
cv::Mat connectedTo(const cv::Mat &mask, const cv::Mat &anchors);

// The mask without the pixels that are closer than this to its outline, and with those outside that
// are. The border of the picture is no outline.
cv::Mat shrunkMask(const cv::Mat &mask, int pixels);
cv::Mat grownMask(const cv::Mat &mask, int pixels);

// 0 .. 255 to 0 .. 1, CV_32F with the same channels.
cv::Mat asShare(const cv::Mat &picture);

// How much of an object is there, as far as confidence goes by it: half of its usual area is enough for 1.
double completeness(int area, double usualArea);

// Box with a margin on every side, cut off at the picture's border.
cv::Rect grownBox(const cv::Rect &box, const cv::Size &margin, const cv::Size &within);

} // namespace zk::engine
