#include "ZkPreview.h"

#include "Pixels_p.h"

#include <QtEndian>

#include <opencv2/imgproc.hpp>

#include <array>
#include <utility>
#include <vector>

namespace zk::effects {

namespace {

constexpr int gridSquare = 12; // px of the frame at 1080
constexpr uchar gridLight = 0xff;
constexpr uchar gridDark = 0xcc;

// The loops over a row are written so that compilers turn them into vector instructions for 16 bit
// lanes: no branches, and no wider numbers in between.

// The share a of 255 of one level, and the rest of the other one.
inline quint16 mixed(quint16 above, quint16 below, quint16 a)
{
    return quint16(quint16(above * a + below * (255 - a) + 127) / 255);
}

inline quint16 channel(quint32 pixel, int index)
{
    return quint16((pixel >> (8 * index)) & 0xff);
}

inline QRgb opaque(quint16 red, quint16 green, quint16 blue)
{
    const auto high = quint16(0xff00 | red);
    const auto low = quint16((green << 8) | blue);
    return (quint32(high) << 16) | low;
}

// Pixels in the byte order of Format_RGBA8888, on a grey background.
void flattenRow(const quint32 *pixels, const uchar *background, int n, QRgb *to)
{
    for (int x = 0; x < n; ++x) {
        const quint32 pixel = qFromLittleEndian(pixels[x]);
        const quint16 alpha = channel(pixel, 3);
        const quint16 below = background[x];
        to[x] = opaque(mixed(channel(pixel, 0), below, alpha),
                       mixed(channel(pixel, 1), below, alpha),
                       mixed(channel(pixel, 2), below, alpha));
    }
}

void alphaRow(const quint32 *pixels, int n, QRgb *to)
{
    for (int x = 0; x < n; ++x) {
        const quint16 alpha = channel(qFromLittleEndian(pixels[x]), 3);
        to[x] = opaque(alpha, alpha, alpha);
    }
}

// The colour over opaque pixels, with its alpha times the matte's.
void overlayRow(const uchar *matte, const Rgba &colour, int n, QRgb *pixels)
{
    const quint16 red = colour[0];
    const quint16 green = colour[1];
    const quint16 blue = colour[2];
    const quint16 strength = colour[3];
    for (int x = 0; x < n; ++x) {
        const QRgb pixel = pixels[x];
        const quint16 over = mixed(matte[x], 0, strength);
        pixels[x] = opaque(mixed(red, channel(pixel, 2), over),
                           mixed(green, channel(pixel, 1), over),
                           mixed(blue, channel(pixel, 0), over));
    }
}

// Calls paint(y, row) for every row of a picture of that size.
template<class Paint>
QImage painted(const QSize &size, const Paint &paint)
{
    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    if (result.isNull())
        return result;
    uchar *bits = result.bits();
    const int stride = result.bytesPerLine();
    forEachRow(size.height(), [&](int y) {
        paint(y, reinterpret_cast<QRgb *>(bits + static_cast<qptrdiff>(y) * stride));
    });
    return result;
}

QImage matteFor(const RenderInput &input, bool invert)
{
    QImage matte = input.matte;
    if (matte.isNull()) {
        matte = QImage(input.frame.size(), QImage::Format_Grayscale8);
        matte.fill(0);
    }
    return invert ? invertedMatte(matte) : matte.convertToFormat(QImage::Format_Grayscale8);
}

QImage onBlack(const cv::Mat &cutout, const QSize &size)
{
    const std::vector<uchar> black(static_cast<std::size_t>(size.width()), 0);
    return painted(size, [&](int y, QRgb *row) {
        flattenRow(cutout.ptr<quint32>(y), black.data(), cutout.cols, row);
    });
}

QImage asAlpha(const cv::Mat &cutout, const QSize &size)
{
    return painted(size,
                   [&](int y, QRgb *row) { alphaRow(cutout.ptr<quint32>(y), cutout.cols, row); });
}

QImage onGrid(const cv::Mat &cutout, const QSize &size)
{
    const int square = qMax(4, qRound(gridSquare * size.height() / 1080.0));
    std::array<std::vector<uchar>, 2> rows;
    for (int i = 0; i < 2; ++i) {
        for (int x = 0; x < size.width(); ++x)
            rows[static_cast<std::size_t>(i)].push_back(x / square % 2 == i ? gridLight : gridDark);
    }
    return painted(size, [&](int y, QRgb *row) {
        const auto &squares = rows[static_cast<std::size_t>(y / square % 2)];
        flattenRow(cutout.ptr<quint32>(y), squares.data(), cutout.cols, row);
    });
}

} // namespace

QImage opaquePicture(const QImage &frame)
{
    QImage result = frame.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.reinterpretAsFormat(QImage::Format_RGB32);
    return std::move(result).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// Most of a frame lies outside the object.
QImage overlaid(QImage picture, const QImage &matte, const PreviewSettings &settings)
{
    cv::Mat pixels = writableViewOf(picture);
    cv::Mat coverage = viewOf(matte);
    if (coverage.size() != pixels.size())
        cv::resize(viewOf(matte), coverage, pixels.size());
    const cv::Rect box = cv::boundingRect(coverage);
    Rgba overlay = toRgba(settings.overlayColour);
    overlay[3] = static_cast<uchar>(qBound(0, settings.overlayAlpha, 255));
    forEachRow(box.height, [&](int row) {
        const int y = box.y + row;
        overlayRow(coverage.ptr<uchar>(y) + box.x, overlay, box.width, pixels.ptr<QRgb>(y) + box.x);
    });
    return picture;
}

QImage composePreview(const RenderInput &input, const Look *look, const PreviewSettings &settings)
{
    if (input.frame.isNull() || (!input.matte.isNull() && input.matte.size() != input.frame.size()))
        return {};
    if (settings.type == PreviewType::Interactive && input.matte.isNull() && !settings.invert)
        return opaquePicture(input.frame);
    RenderInput shown = input;
    shown.matte = matteFor(input, settings.invert);
    if (settings.type == PreviewType::Interactive)
        return overlaid(opaquePicture(shown.frame), shown.matte, settings);
    const QImage cutout = renderCutout(shown, look ? *look : Look());
    const cv::Mat pixels = viewOf(cutout);
    switch (settings.type) {
    case PreviewType::Result:
        return onBlack(pixels, cutout.size());
    case PreviewType::Alpha:
        return asAlpha(pixels, cutout.size());
    default:
        return onGrid(pixels, cutout.size());
    }
}

} // namespace zk::effects
