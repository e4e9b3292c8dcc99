#include "ZkDrawnTextures.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace zk::bench {

namespace {

constexpr double grain = 2.5; // grey levels, standard deviation

// 0 .. 1, with structures from the coarse size down to a few pixels.
cv::Mat noise(const cv::Size &size, double coarse, cv::RNG &random)
{
    cv::Mat sum = cv::Mat::zeros(size, CV_32F);
    double share = 1.0;
    for (double pixels = coarse; pixels > 2.0; pixels *= 0.5, share *= 0.6) {
        cv::Mat small(cvCeil(size.height / pixels) + 2, cvCeil(size.width / pixels) + 2, CV_32F);
        random.fill(small, cv::RNG::UNIFORM, 0.0, 1.0);
        cv::resize(small, small, size, 0, 0, cv::INTER_CUBIC);
        sum += share * small;
    }
    cv::normalize(sum, sum, 0.0, 1.0, cv::NORM_MINMAX);
    return sum;
}

cv::Mat sharpened(const cv::Mat &noise, double slope)
{
    return cv::min(cv::max((noise - 0.5) * slope + 0.5, 0.0), 1.0);
}

} // namespace

cv::Mat mixed(const cv::Mat &a, const cv::Mat &b, const cv::Mat &share)
{
    cv::Mat three;
    cv::merge(std::vector<cv::Mat>(3, share), three);
    return a.mul(cv::Scalar::all(1.0) - three) + b.mul(three);
}

Palette anyPalette(cv::RNG &random)
{
    Palette palette;
    for (cv::Scalar &color : palette) {
        for (int c = 0; c < 3; ++c)
            color[c] = random.uniform(20.0, 235.0);
    }
    return palette;
}

cv::Mat texture(const cv::Size &size, const Palette &palette, double coarse, cv::RNG &random)
{
    const cv::Mat first(size, CV_32FC3, palette[0]), second(size, CV_32FC3, palette[1]);
    const cv::Mat third(size, CV_32FC3, palette[2]);
    cv::Mat result = mixed(first, second, sharpened(noise(size, coarse, random), 3.0));
    result = mixed(result, third, sharpened(noise(size, coarse / 2, random) - 0.15, 10.0));
    cv::Mat light = 0.7 + 0.6 * noise(size, coarse * 2, random);
    cv::merge(std::vector<cv::Mat>(3, light), light);
    return result.mul(light);
}

cv::Mat asShare(const cv::Mat &mask)
{
    cv::Mat share;
    mask.convertTo(share, CV_32F, 1.0 / 255.0);
    return share;
}

cv::Size withRoom(int pixels)
{
    return drawnSize + cv::Size(2 * pixels, 2 * pixels);
}

cv::Mat photograph(const cv::Mat &picture, std::uint64_t number)
{
    cv::Mat own(picture.size(), CV_32FC3), result;
    cv::RNG random(number);
    random.fill(own, cv::RNG::NORMAL, 0.0, grain);
    cv::Mat(picture + own).convertTo(result, CV_8U);
    return result;
}

cv::Vec2d anyWay(cv::RNG &random, double least, double most)
{
    const double angle = random.uniform(0.0, 2.0 * CV_PI), length = random.uniform(least, most);
    return {length * std::cos(angle), length * std::sin(angle)};
}

} // namespace zk::bench
