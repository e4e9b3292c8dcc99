// Not public: pixels, their blending, blurs and noise that the renderers share.
//
// Pictures are CV_8UC4 in R, G, B, A order with straight alpha; blending stays in straight alpha, so
// that colours of thin edges keep their full precision.
#pragma once

#include <QColor>
#include <QImage>

#include <opencv2/core.hpp>

namespace zk::effects {

using Rgba = cv::Vec4b;

// The image's own memory, not a copy: the image must outlive the view. The const one is not written.
cv::Mat viewOf(const QImage &image);
cv::Mat writableViewOf(QImage &image);

inline uchar toByte(float value)
{
    return static_cast<uchar>(value <= 0 ? 0 : value >= 255 ? 255 : value + 0.5F);
}

inline uchar multiplied(int a, int b)
{
    return static_cast<uchar>((a * b + 127) / 255);
}

inline float clamped(float value)
{
    return value < 0 ? 0 : value > 1 ? 1 : value;
}

Rgba toRgba(const QColor &colour, double opacity = 1);

// The colour with its alpha times coverage (0..1).
inline Rgba covered(const Rgba &colour, float coverage)
{
    return {colour[0], colour[1], colour[2], toByte(static_cast<float>(colour[3]) * coverage)};
}

inline void blendOver(Rgba &below, const Rgba &above)
{
    if (above[3] == 255 || below[3] == 0) {
        below = above;
        return;
    }
    if (below[3] == 255) { // by far the most frequent, and a constant divisor is cheap
        for (int c = 0; c < 3; ++c)
            below[c] =
                static_cast<uchar>((above[c] * above[3] + below[c] * (255 - above[3]) + 127) / 255);
        return;
    }
    const int over = above[3] * 255;
    const int under = below[3] * (255 - above[3]);
    const int sum = over + under;
    for (int c = 0; c < 3; ++c)
        below[c] = static_cast<uchar>((above[c] * over + below[c] * under + sum / 2) / sum);
    below[3] = static_cast<uchar>((sum + 127) / 255);
}

// Calls row(y) for every row, on several threads; rows must not depend on each other.
template<class Row>
void forEachRow(int rows, const Row &row)
{
    cv::parallel_for_(cv::Range(0, rows), [&row](const cv::Range &range) {
        for (int y = range.start; y < range.end; ++y)
            row(y);
    });
}

// Paints shader(x, y) over every pixel of the canvas; alpha 0 is "nothing here".
template<class Shader>
void shade(cv::Mat &canvas, const Shader &shader)
{
    forEachRow(canvas.rows, [&](int y) {
        Rgba *row = canvas.ptr<Rgba>(y);
        for (int x = 0; x < canvas.cols; ++x) {
            const Rgba pixel = shader(x, y);
            if (pixel[3])
                blendOver(row[x], pixel);
        }
    });
}

void paintOver(cv::Mat &canvas, const cv::Mat &picture);

// A blur that is close to a Gaussian, with a reach of at most blurReach(sigma) pixels; what lies
// outside continues the border. CV_8UC1 becomes CV_16UC1 (0..65535), which keeps wide ramps free of
// steps; CV_16UC1 stays what it is.
cv::Mat blurred(const cv::Mat &image, double sigma);
int blurReach(double sigma);

// Noise that depends on its arguments alone.
quint32 hashed(quint32 a, quint32 b);
// -1..1
float randomOf(quint32 a, quint32 b);
// A smooth wave through random values at the whole numbers, -1..1, that repeats after `period`.
float wave(float position, int period, quint32 seed);

} // namespace zk::effects
