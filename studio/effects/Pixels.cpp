#include "Pixels_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::effects {

namespace {

constexpr int boxPasses = 3;

// The radii of three box blurs that together have this standard deviation.
std::array<int, boxPasses> boxRadii(double sigma)
{
    const double variance = 12 * sigma * sigma;
    int width = static_cast<int>(std::sqrt(variance / boxPasses + 1));
    width -= width % 2 == 0 ? 1 : 0;
    const double narrow =
        (variance - boxPasses * (width * width + 4 * width + 3)) / (-4.0 * width - 4);
    std::array<int, boxPasses> radii {};
    for (int pass = 0; pass < boxPasses; ++pass)
        radii[static_cast<std::size_t>(pass)] =
            (pass < std::lround(narrow) ? width : width + 2) / 2;
    return radii;
}

// Below this three boxes are too coarse a Gaussian.
bool isNarrow(double sigma)
{
    return sigma < 2;
}

} // namespace

cv::Mat viewOf(const QImage &image)
{
    const int type = image.depth() == 8 ? CV_8UC1 : CV_8UC4;
    return cv::Mat(image.height(),
                   image.width(),
                   type,
                   const_cast<uchar *>(image.constBits()),
                   static_cast<std::size_t>(image.bytesPerLine()));
}

cv::Mat writableViewOf(QImage &image)
{
    image.bits(); // detaches
    return viewOf(image);
}

Rgba toRgba(const QColor &colour, double opacity)
{
    return {static_cast<uchar>(colour.red()),
            static_cast<uchar>(colour.green()),
            static_cast<uchar>(colour.blue()),
            toByte(static_cast<float>(colour.alpha() * opacity))};
}

void paintOver(cv::Mat &canvas, const cv::Mat &picture)
{
    forEachRow(canvas.rows, [&](int y) {
        Rgba *below = canvas.ptr<Rgba>(y);
        const Rgba *above = picture.ptr<Rgba>(y);
        for (int x = 0; x < canvas.cols; ++x) {
            if (above[x][3])
                blendOver(below[x], above[x]);
        }
    });
}

cv::Mat blurred(const cv::Mat &image, double sigma)
{
    cv::Mat result;
    if (image.type() == CV_8UC1)
        image.convertTo(result, CV_16U, 257);
    else
        result = image.clone();
    if (sigma <= 0)
        return result;
    if (isNarrow(sigma)) {
        const int width = 2 * blurReach(sigma) + 1;
        cv::GaussianBlur(result, result, {width, width}, sigma, sigma, cv::BORDER_REPLICATE);
        return result;
    }
    for (const int radius : boxRadii(sigma)) {
        const int width = 2 * radius + 1;
        cv::blur(result, result, {width, width}, {-1, -1}, cv::BORDER_REPLICATE);
    }
    return result;
}

int blurReach(double sigma)
{
    if (sigma <= 0)
        return 0;
    if (isNarrow(sigma))
        return static_cast<int>(std::ceil(3 * sigma));
    const auto radii = boxRadii(sigma);
    return radii[0] + radii[1] + radii[2];
}

quint32 hashed(quint32 a, quint32 b)
{
    quint32 h = a * 0x9e3779b1U ^ (b + 0x7f4a7c15U) * 0x85ebca77U;
    h ^= h >> 15;
    h *= 0x2c1b3c6dU;
    h ^= h >> 12;
    h *= 0x297a2d39U;
    return h ^ (h >> 15);
}

float randomOf(quint32 a, quint32 b)
{
    return static_cast<float>(hashed(a, b) >> 8) / 8388607.5F - 1;
}

float wave(float position, int period, quint32 seed)
{
    const float whole = std::floor(position);
    const float t = position - whole;
    const int left = ((static_cast<int>(whole) % period) + period) % period;
    const float a = randomOf(static_cast<quint32>(left), seed);
    const float b = randomOf(static_cast<quint32>((left + 1) % period), seed);
    return a + (b - a) * t * t * (3 - 2 * t);
}

} // namespace zk::effects
