// How close a filled clip is to the truth, inside the holes.
#pragma once

#include "ZkHolePair.h"

namespace zk::bench {

struct EraseMeasures
{
    double psnr = 0.0; // decibels, mean over the frames
    double psnrBackground = 0.0;
    double ssim = 0.0;
    // Grey levels: mean difference of neighbouring frames along the true motion.
    double flicker = 0.0;
    double flickerOfTruth = 0.0;
    double seconds = 0.0; // per frame

    EraseMeasures &operator+=(const EraseMeasures &other);
    EraseMeasures operator*(double factor) const;
};

// The motion of the truth from each frame to the next; CV_32FC2.
std::vector<cv::Mat> trueMotion(const HolePair &pair);

EraseMeasures measureErasing(const HolePair &pair,
                             const std::vector<cv::Mat> &motion,
                             const std::vector<cv::Mat> &result);

} // namespace zk::bench
