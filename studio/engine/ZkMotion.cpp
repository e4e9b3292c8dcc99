#include "ZkMotion.h"

#include "ZkFrameFeatures.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <algorithm>

namespace zk::engine {

namespace {

constexpr int smallestSide = 32; // below it the flow's patches and pyramid do not fit

cv::Mat shrunkMotion(const cv::Mat &field, const cv::Size &size)
{
    cv::Mat small;
    cv::resize(field, small, size, 0, 0, cv::INTER_AREA);
    const cv::Scalar scale(double(size.width) / field.cols, double(size.height) / field.rows);
    cv::multiply(small, scale, small);
    return small;
}

} // namespace

cv::Mat motionImage(const cv::Mat &frame, const MotionOptions &options)
{
    cv::Mat gray;
    cv::cvtColor(
        shrunkFrame(frame, workingSize(frame.size(), options.pixels)), gray, cv::COLOR_RGB2GRAY);
    return gray;
}

cv::Mat motionBetween(const cv::Mat &from, const cv::Mat &to, const MotionOptions &options)
{
    if (std::min(from.cols, from.rows) < smallestSide)
        return cv::Mat::zeros(from.size(), CV_32FC2);
    const auto flow = cv::DISOpticalFlow::create(cv::DISOpticalFlow::PRESET_FAST);
    flow->setUseSpatialPropagation(options.spatialPropagation);
    cv::Mat field;
    flow->calc(from, to, field);
    return field;
}

MotionField measureMotion(const cv::Mat &earlier,
                          const cv::Mat &later,
                          const cv::Size &workingSize,
                          const MotionOptions &options)
{
    return {shrunkMotion(motionBetween(earlier, later, options), workingSize),
            shrunkMotion(motionBetween(later, earlier, options), workingSize)};
}

} // namespace zk::engine
