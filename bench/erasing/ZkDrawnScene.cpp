#include "ZkDrawnScene.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>

namespace zk::bench {

namespace {

const cv::Size frameSize(640, 360);
constexpr int room = 40; // pixels on every side of the landscape, for the pan
constexpr double grain = 2.5; // grey levels, standard deviation

using Palette = std::array<cv::Scalar, 3>;

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

cv::Mat mixed(const cv::Mat &a, const cv::Mat &b, const cv::Mat &share)
{
    cv::Mat three;
    cv::merge(std::vector<cv::Mat>(3, share), three);
    return a.mul(cv::Scalar::all(1.0) - three) + b.mul(three);
}

cv::Mat sharpened(const cv::Mat &noise, double slope)
{
    return cv::min(cv::max((noise - 0.5) * slope + 0.5, 0.0), 1.0);
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

// Patches of the three colours with soft and hard borders.
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

cv::Matx23d moveBy(const cv::Vec2d &shift, double degrees)
{
    const cv::Point2f middle(frameSize.width * 0.5f, frameSize.height * 0.5f);
    cv::Matx23d matrix = cv::getRotationMatrix2D(middle, degrees, 1.0);
    matrix(0, 2) += shift[0];
    matrix(1, 2) += shift[1];
    return matrix;
}

cv::Vec2d anyWay(cv::RNG &random, double least, double most)
{
    const double angle = random.uniform(0.0, 2.0 * CV_PI), length = random.uniform(least, most);
    return {length * std::cos(angle), length * std::sin(angle)};
}

} // namespace

DrawnScene::DrawnScene(ObjectKind kind, std::uint64_t seed)
{
    cv::RNG random(seed * 7919 + 17);
    random.next();
    const Palette around = anyPalette(random);
    Palette own = anyPalette(random);
    if (kind == ObjectKind::Alike)
        own[2] = around[0];
    const cv::Size wide = frameSize + cv::Size(2 * room, 2 * room);
    m_landscape = texture(wide, around, 160.0, random);
    m_object = texture(frameSize, own, 70.0, random);
    m_shape = shapeOf(kind, random);
    m_pan = anyWay(random, 0.0, 3.0);
    m_motion = anyWay(random, 1.0, 5.0);
    m_turn = random.uniform(-1.0, 1.0);
    m_grain = random.next();
}

cv::Mat DrawnScene::shapeOf(ObjectKind kind, cv::RNG &random) const
{
    cv::Mat shape = cv::Mat::zeros(frameSize, CV_8U);
    const cv::Point middle(frameSize.width / 2, frameSize.height / 2);
    const int length = random.uniform(40, 100), width = random.uniform(25, 60);
    cv::ellipse(shape,
                middle,
                {length, width},
                random.uniform(0.0, 180.0),
                0,
                360,
                255,
                cv::FILLED,
                cv::LINE_AA);
    const int limbs = kind == ObjectKind::Limbs ? random.uniform(3, 6) : 0;
    for (int i = 0; i < limbs; ++i) {
        const cv::Vec2d way = anyWay(random, 1.1, 1.7) * double(length);
        const cv::Point end(middle.x + cvRound(way[0]), middle.y + cvRound(way[1]));
        cv::line(shape, middle, end, 255, random.uniform(5, 22), cv::LINE_AA);
    }
    return shape;
}

cv::Mat DrawnScene::mask(int index) const
{
    cv::Mat result;
    cv::warpAffine(m_shape, result, moveBy(m_motion * index, m_turn * index), frameSize);
    cv::GaussianBlur(result, result, {3, 3}, 0.0);
    return result;
}

cv::Mat DrawnScene::frame(int index) const
{
    cv::Mat behind, object, share, result;
    const cv::Matx23d pan(1, 0, m_pan[0] * index - room, 0, 1, m_pan[1] * index - room);
    cv::warpAffine(m_landscape, behind, pan, frameSize, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::warpAffine(m_object, object, moveBy(m_motion * index, m_turn * index), frameSize);
    mask(index).convertTo(share, CV_32F, 1.0 / 255.0);
    cv::Mat seen = mixed(behind, object, share), own(frameSize, CV_32FC3);
    cv::RNG random(m_grain + std::uint64_t(index + 100));
    random.fill(own, cv::RNG::NORMAL, 0.0, grain);
    cv::Mat(seen + own).convertTo(result, CV_8U);
    return result;
}

} // namespace zk::bench
