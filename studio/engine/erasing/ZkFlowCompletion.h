// The background's motion where it is hidden or not to be trusted. Not public.
#pragma once

#include <opencv2/core.hpp>

namespace zk::engine {

// Squared pixels between there and back; above it a motion is not believed.
constexpr double mostContradiction = 2.25;

// Motion from one picture (CV_8UC1) to another; none in pictures that are too small for it.
cv::Mat flowBetween(const cv::Mat &from, const cv::Mat &to);

// Squared length of there and back (CV_32FC2 both), CV_32FC1; a large number where "back" is not known.
cv::Mat contradictions(const cv::Mat &there, const cv::Mat &back);

// Replaces the unknown part (CV_8UC1) of a motion by what follows from the motion around it, as far as
// that does not contradict itself. Each connected part by itself: a plane's motion is fitted to what is
// around it, and what remains is spread smoothly inwards.
void completeFlow(cv::Mat *flow, const cv::Mat &unknown, const cv::Mat &contradictions);

// The picture as it looks where its content was a motion earlier.
cv::Mat movedBack(const cv::Mat &picture, const cv::Mat &flow);

} // namespace zk::engine
