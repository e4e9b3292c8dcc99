// One plane's motion, fitted to measured motion that is partly wrong. Not public.
#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace zk::engine {

struct MotionSample
{
    cv::Point2f at;
    cv::Vec2f motion;
};

// Measured motion (CV_32FC2) at up to that many pixels of the mask (CV_8UC1), spread over it.
std::vector<MotionSample> motionSamples(const cv::Mat &motion, const cv::Mat &mask, int most);

// The motion of a rigid plane under a moving camera, eight parameters, quadratic in the place.
class MotionModel
{
public:
    // Fits to the largest group of samples that agree; false when there are too few of them.
    // The same samples and seed give the same model.
    bool fit(const std::vector<MotionSample> &samples, const cv::Rect &area, std::uint64_t seed);

    cv::Vec2f motionAt(const cv::Point2f &at) const;
    cv::Mat motionOver(const cv::Size &size) const; // at every pixel of a picture, CV_32FC2
    // Share of the samples that the model explains, 0 .. 1.
    double inliers() const { return m_inliers; }

private:
    using Row = std::array<double, 8>;

    cv::Point2d normalised(const cv::Point2f &at) const;
    bool startFromThree(const std::vector<MotionSample> &samples, cv::RNG &random);
    void startFrom(const std::vector<MotionSample> &samples, cv::RNG &random);
    bool solve(const std::vector<MotionSample> &samples);
    double misfit(const MotionSample &sample) const; // squared pixels

    Row m_parameters {};
    cv::Point2d m_center;
    double m_scale = 1.0;
    double m_inliers = 0.0;
};

} // namespace zk::engine
