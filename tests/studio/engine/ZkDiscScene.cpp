#include "ZkDiscScene.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::test {

namespace {

// Smooth noise around a colour.
cv::Mat texture(const cv::Size &size, const cv::Scalar &color, int seed)
{
    cv::Mat noise(size, CV_8UC3);
    cv::RNG random(seed);
    random.fill(noise, cv::RNG::UNIFORM, 0, 256);
    cv::GaussianBlur(noise, noise, {0, 0}, 2.0);
    cv::Mat result;
    noise.convertTo(result, CV_16S, 1.5, -192.0);
    cv::add(result, color, result);
    result.convertTo(result, CV_8U);
    return result;
}

} // namespace

DiscScene::DiscScene(const cv::Size &size, double radius)
    : m_size(size)
    , m_radius(radius)
    , m_background(texture(size, {90, 120, 80}, 11))
    , m_texture(texture(size * 2, {190, 90, 60}, 23))
{ }

cv::Mat DiscScene::matte(const cv::Point2d &center) const
{
    cv::Mat matte(m_size, CV_8U);
    for (int y = 0; y < matte.rows; ++y) {
        for (int x = 0; x < matte.cols; ++x) {
            const double inside = m_radius - std::hypot(x - center.x, y - center.y);
            matte.at<uchar>(y, x) = cv::saturate_cast<uchar>(255.0 * (inside / 2.0 + 0.5));
        }
    }
    return matte;
}

cv::Mat DiscScene::frame(const cv::Point2d &center) const
{
    const cv::Mat alpha = matte(center);
    cv::Mat result = m_background.clone();
    const cv::Point shift(m_size.width - cvRound(center.x), m_size.height - cvRound(center.y));
    for (int y = 0; y < result.rows; ++y) {
        for (int x = 0; x < result.cols; ++x) {
            const double share = alpha.at<uchar>(y, x) / 255.0;
            if (share == 0.0)
                continue;
            const cv::Vec3b own = m_texture.at<cv::Vec3b>(y + shift.y, x + shift.x);
            cv::Vec3b &pixel = result.at<cv::Vec3b>(y, x);
            for (int k = 0; k < 3; ++k)
                pixel[k] = cv::saturate_cast<uchar>(share * own[k] + (1.0 - share) * pixel[k]);
        }
    }
    return result;
}

cv::Mat DiscScene::stroke(const cv::Point2d &center) const
{
    cv::Mat stroke = cv::Mat::zeros(m_size, CV_8U);
    const cv::Point reach(cvRound(m_radius * 0.6), 0);
    const cv::Point middle(cvRound(center.x), cvRound(center.y));
    cv::line(stroke, middle - reach, middle + reach, cv::Scalar(255), 5);
    return stroke;
}

} // namespace zk::test
