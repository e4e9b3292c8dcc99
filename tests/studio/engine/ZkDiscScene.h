// A textured disc with a soft edge in front of a textured background, with its true matte.
#pragma once

#include <opencv2/core.hpp>

namespace zk::test {

class DiscScene
{
public:
    explicit DiscScene(const cv::Size &size = {320, 180}, double radius = 30.0);

    // The disc around this point, in R, G, B order; its texture moves with it.
    cv::Mat frame(const cv::Point2d &center) const;
    cv::Mat matte(const cv::Point2d &center) const;
    // The background alone, when the disc is out of the picture.
    cv::Mat empty() const { return m_background.clone(); }
    // A horizontal stroke through the middle of the disc.
    cv::Mat stroke(const cv::Point2d &center) const;

private:
    cv::Size m_size;
    double m_radius;
    cv::Mat m_background;
    cv::Mat m_texture; // larger than the picture, the disc's own coordinates
};

} // namespace zk::test
