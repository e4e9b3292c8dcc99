#include "ZkEraseMeasures.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <cmath>

namespace zk::bench {

namespace {

// Of the pixels of the mask; negative when there are none.
double psnrInside(const cv::Mat &a, const cv::Mat &b, const cv::Mat &mask)
{
    const int count = cv::countNonZero(mask);
    if (count == 0)
        return -1.0;
    const double sum = cv::norm(a, b, cv::NORM_L2SQR, mask);
    return 10.0 * std::log10(255.0 * 255.0 / std::max(1e-3, sum / (3.0 * count)));
}

cv::Mat smoothed(const cv::Mat &image)
{
    cv::Mat result;
    cv::GaussianBlur(image, result, {11, 11}, 1.5);
    return result;
}

double ssimInside(const cv::Mat &a, const cv::Mat &b, const cv::Mat &mask)
{
    cv::Mat x, y;
    cv::cvtColor(a, x, cv::COLOR_RGB2GRAY);
    cv::cvtColor(b, y, cv::COLOR_RGB2GRAY);
    x.convertTo(x, CV_32F);
    y.convertTo(y, CV_32F);
    const cv::Mat mx = smoothed(x), my = smoothed(y);
    const cv::Mat xx = smoothed(x.mul(x)) - mx.mul(mx);
    const cv::Mat yy = smoothed(y.mul(y)) - my.mul(my);
    const cv::Mat xy = smoothed(x.mul(y)) - mx.mul(my);
    const double c1 = 6.5025, c2 = 58.5225;
    cv::Mat above = (2.0 * mx.mul(my) + c1).mul(2.0 * xy + c2);
    cv::Mat below = (mx.mul(mx) + my.mul(my) + c1).mul(xx + yy + c2);
    return cv::mean(above / below, mask)[0];
}

double
difference(const cv::Mat &from, const cv::Mat &to, const cv::Mat &motion, const cv::Mat &mask)
{
    cv::Mat map(motion.size(), CV_32FC2), moved, result;
    map.forEach<cv::Vec2f>([&](cv::Vec2f &place, const int *at) {
        place = motion.at<cv::Vec2f>(at[0], at[1]) + cv::Vec2f(float(at[1]), float(at[0]));
    });
    cv::remap(to, moved, map, cv::noArray(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::absdiff(from, moved, result);
    const cv::Scalar mean = cv::mean(result, mask);
    return (mean[0] + mean[1] + mean[2]) / 3.0;
}

} // namespace

EraseMeasures &EraseMeasures::operator+=(const EraseMeasures &other)
{
    psnr += other.psnr;
    psnrBackground += other.psnrBackground;
    ssim += other.ssim;
    flicker += other.flicker;
    flickerOfTruth += other.flickerOfTruth;
    seconds += other.seconds;
    return *this;
}

EraseMeasures EraseMeasures::operator*(double factor) const
{
    return {psnr * factor,
            psnrBackground * factor,
            ssim * factor,
            flicker * factor,
            flickerOfTruth * factor,
            seconds * factor};
}

std::vector<cv::Mat> trueMotion(const HolePair &pair)
{
    std::vector<cv::Mat> result;
    const auto flow = cv::DISOpticalFlow::create(cv::DISOpticalFlow::PRESET_MEDIUM);
    cv::Mat before, after;
    for (const cv::Mat &frame : pair.truth) {
        cv::cvtColor(frame, after, cv::COLOR_RGB2GRAY);
        if (!before.empty()) {
            cv::Mat field;
            flow->calc(before, after, field);
            result.push_back(field);
        }
        before = after.clone();
    }
    return result;
}

EraseMeasures measureErasing(const HolePair &pair,
                             const std::vector<cv::Mat> &motion,
                             const std::vector<cv::Mat> &result)
{
    EraseMeasures measures;
    int withHole = 0, withBackground = 0, steps = 0;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const cv::Mat &hole = pair.holes[i];
        if (cv::countNonZero(hole) == 0)
            continue;
        ++withHole;
        measures.psnr += psnrInside(result[i], pair.truth[i], hole);
        measures.ssim += ssimInside(result[i], pair.truth[i], hole);
        const double background = psnrInside(result[i], pair.truth[i], pair.background[i]);
        if (background >= 0.0) {
            ++withBackground;
            measures.psnrBackground += background;
        }
        if (i + 1 < result.size()) {
            ++steps;
            measures.flicker += difference(result[i], result[i + 1], motion[i], hole);
            measures.flickerOfTruth +=
                difference(pair.truth[i], pair.truth[i + 1], motion[i], hole);
        }
    }
    measures.psnr /= std::max(1, withHole);
    measures.ssim /= std::max(1, withHole);
    measures.psnrBackground /= std::max(1, withBackground);
    measures.flicker /= std::max(1, steps);
    measures.flickerOfTruth /= std::max(1, steps);
    return measures;
}

} // namespace zk::bench
