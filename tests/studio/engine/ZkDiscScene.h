// A textured disc with a soft edge in front of a textured background, with its true matte.
#pragma once

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace zk::test {

class DiscScene
{
public:
    explicit DiscScene(const cv::Size &size = {320, 180},
                       double radius = 30.0,
                       const cv::Scalar &landscape = {90, 120, 80},
                       int seed = 11)
        : m_size(size)
        , m_radius(radius)
        , m_background(texture(size, landscape, seed))
        , m_texture(texture(size * 2, {190, 90, 60}, 23))
    { }

    // The disc around this point, in R, G, B order; its texture moves with it.
    cv::Mat frame(const cv::Point2d &center) const
    {
        cv::Mat share, object, own;
        cv::cvtColor(matte(center), share, cv::COLOR_GRAY2RGB);
        const cv::Point corner(m_size.width - cvRound(center.x), m_size.height - cvRound(center.y));
        cv::multiply(m_texture(cv::Rect(corner, m_size)), share, object, 1 / 255.0);
        cv::multiply(m_background, cv::Scalar::all(255) - share, own, 1 / 255.0);
        return object + own;
    }
    cv::Mat matte(const cv::Point2d &center) const
    {
        cv::Mat matte(m_size, CV_8U);
        matte.forEach<uchar>([&](uchar &pixel, const int *at) {
            const double inside = m_radius - std::hypot(at[1] - center.x, at[0] - center.y);
            pixel = cv::saturate_cast<uchar>(255.0 * (inside / 2.0 + 0.5));
        });
        return matte;
    }
    // The background alone, when the disc is out of the picture.
    cv::Mat empty() const { return m_background.clone(); }
    // A horizontal stroke through the middle of the disc.
    cv::Mat stroke(const cv::Point2d &center) const
    {
        cv::Mat stroke = cv::Mat::zeros(m_size, CV_8U);
        const cv::Point reach(cvRound(m_radius * 0.6), 0);
        const cv::Point middle(cvRound(center.x), cvRound(center.y));
        cv::line(stroke, middle - reach, middle + reach, cv::Scalar(255), 5);
        return stroke;
    }

private:
    // Smooth noise around a colour.
    static cv::Mat texture(const cv::Size &size, const cv::Scalar &color, int seed)
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

    cv::Size m_size;
    double m_radius;
    cv::Mat m_background;
    cv::Mat m_texture; // larger than the picture, the disc's own coordinates
};

} // namespace zk::test
