#include "ZkMotion.h"

#include "ZkFrameFeatures.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <algorithm>

namespace zk::engine {

namespace {

constexpr int smallestSide = 32; // below it the flow's patches and pyramid do not fit

cv::Mat flowBetween(const cv::Mat &from, const cv::Mat &to, const cv::Size &size, bool propagate)
{
    const auto flow = cv::DISOpticalFlow::create(cv::DISOpticalFlow::PRESET_FAST);
    flow->setUseSpatialPropagation(propagate);
    cv::Mat field;
    flow->calc(from, to, field);
    cv::Mat small;
    cv::resize(field, small, size, 0, 0, cv::INTER_AREA);
    const cv::Scalar scale(double(size.width) / from.cols, double(size.height) / from.rows);
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

MotionField measureMotion(const cv::Mat &earlier,
                          const cv::Mat &later,
                          const cv::Size &workingSize,
                          const MotionOptions &options)
{
    if (std::min(earlier.cols, earlier.rows) < smallestSide)
        return {cv::Mat::zeros(workingSize, CV_32FC2), cv::Mat::zeros(workingSize, CV_32FC2)};
    return {flowBetween(earlier, later, workingSize, options.spatialPropagation),
            flowBetween(later, earlier, workingSize, options.spatialPropagation)};
}

} // namespace zk::engine
