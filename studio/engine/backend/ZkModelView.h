// How a frame is laid into the pictures of a network, and what the network makes of it comes back. Not
// public.
#pragma once

#include <opencv2/core.hpp>

namespace zk::engine {

class OnnxModel;

// The frame is shrunk, never enlarged, so that it fits, with its proportions kept; it lies in the upper left
// corner. What is left beside and below repeats the frame's border, and is 0 in masks. A network for any
// size gets no more than 854 x 480 pixels, and beside these what fills up to multiples of 32.
class ModelView
{
public:
    ModelView(const OnnxModel &model, const cv::Size &frame);

    // CV_8UC3 or CV_8UC4 to CV_32FC3, 0 .. 1.
    cv::Mat picture(const cv::Mat &frame) const;
    // CV_8UC1 to CV_32FC1: 1 where any part of the pixel is set, 0 elsewhere; an empty one sets nothing.
    cv::Mat mask(const cv::Mat &mask) const;
    // CV_8UC1 to CV_32FC1, 0 .. 1; an empty one is all 0.
    cv::Mat matte(const cv::Mat &matte) const;

    // The frame's part of a result, of the size in which the frame was laid in.
    cv::Mat framePart(const cv::Mat &result) const;
    // A result as a matte of the frame, CV_8UC1; where the frame had been shrunk its outline is laid on
    // the frame's edges.
    cv::Mat matteOf(const cv::Mat &frame, const cv::Mat &result) const;

private:
    cv::Mat padded(const cv::Mat &picture, int border) const;

    cv::Size m_shrunk; // the frame's
    cv::Size m_whole; // the network's pictures'
};

} // namespace zk::engine
