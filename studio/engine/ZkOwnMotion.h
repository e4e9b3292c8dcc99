// How the pixels of a frame move against the picture as a whole. Not public.
#pragma once

#include <opencv2/core.hpp>

namespace zk::engine {

// Motion from one motion image to another of its size, without that of the camera, which is one plane's motion
// over the whole picture: CV_32FC2 (x, y) of that size, in pixels of a picture that is 240 high, so that it says
// the same at every size. Pure; may be called from any thread.
cv::Mat ownMotion(const cv::Mat &image, const cv::Mat &neighbour);

} // namespace zk::engine
