// What moves otherwise than its surroundings. The functions are not public.
#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

struct ForeignMotionOptions
{
    int gap = 3; // pixels next to what is asked about whose motion it may have spoilt
    double level = 0.9; // this share of the surroundings differs less than what counts
    double noise = 3.0; // grey levels, what differs less counts nowhere
    double gain = 1.5; // logit for each time that a difference exceeds what counts
    double most = 6.0; // logit
};

// The motion of the surroundings (CV_8UC1) is continued into the rest of the picture. Where none of the
// other pictures, some frames before and after, shows there what this one shows, something else moves:
// the more it differs the higher the result, a logit, CV_32FC1, 0 .. most. Pictures are CV_8UC3 of one
// size; without others the result is 0.
cv::Mat foreignMotion(const cv::Mat &picture,
                      const std::vector<cv::Mat> &others,
                      const cv::Mat &surroundings,
                      const ForeignMotionOptions &options = {});

// What of the picture goes along with what the mask (CV_8UC1) covers, against the motion of what lies
// further away than reach pixels from it: parts that the mask has missed, and what gets lighter when the
// object has gone, its shadow. CV_8UC1, without the mask itself and nothing that is not connected to it;
// empty when there is nothing, as when neither moves.
cv::Mat movingAlong(const cv::Mat &picture,
                    const std::vector<cv::Mat> &others,
                    const cv::Mat &mask,
                    int reach,
                    const ForeignMotionOptions &options = {});

} // namespace zk::engine
