#include "ZkPreview.h"

#include "Pixels_p.h"

#include <utility>
#include <vector>

namespace zk::effects {

namespace {

constexpr int gridSquare = 12; // px of the frame at 1080
constexpr uchar gridLight = 0xff;
constexpr uchar gridDark = 0xcc;

// Opaque pixels in the byte order of Format_ARGB32_Premultiplied.
QRgb opaque(const Rgba &colour)
{
    return qRgb(colour[0], colour[1], colour[2]);
}

// On an opaque background.
Rgba flattenedOn(const Rgba &background, const Rgba &pixel)
{
    const int over = pixel[3];
    const int under = 255 - over;
    Rgba result;
    for (int c = 0; c < 3; ++c)
        result[c] = static_cast<uchar>((pixel[c] * over + background[c] * under + 127) / 255);
    return result;
}

// Calls pixel(x, y) for the colour of every pixel, which counts as opaque.
template<class Pixel>
QImage painted(const QSize &size, const Pixel &pixel)
{
    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    if (result.isNull())
        return result;
    uchar *bits = result.bits();
    const int stride = result.bytesPerLine();
    forEachRow(size.height(), [&](int y) {
        QRgb *row = reinterpret_cast<QRgb *>(bits + static_cast<qptrdiff>(y) * stride);
        for (int x = 0; x < size.width(); ++x)
            row[x] = opaque(pixel(x, y));
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

// The frame on black, as it is when no mask lies over it: what plays most, so it has to be quick.
QImage asItIs(const QImage &frame)
{
    QImage result = frame.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.reinterpretAsFormat(QImage::Format_RGB32);
    return std::move(result).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage withOverlay(const RenderInput &input, const PreviewSettings &settings)
{
    const QImage frame = input.frame.convertToFormat(QImage::Format_RGBA8888);
    const cv::Mat pixels = viewOf(frame);
    const cv::Mat matte = viewOf(input.matte);
    Rgba overlay = toRgba(settings.overlayColour);
    const int strength = qBound(0, settings.overlayAlpha, 255);
    return painted(frame.size(), [&](int x, int y) {
        const Rgba black(0, 0, 0, 255);
        const Rgba &pixel = pixels.at<Rgba>(y, x);
        Rgba above = overlay;
        above[3] = multiplied(matte.at<uchar>(y, x), strength);
        // Most of most frames.
        if (above[3] == 0 && pixel[3] == 255)
            return pixel;
        return flattenedOn(flattenedOn(black, pixel), above);
    });
}

QImage onBlack(const cv::Mat &cutout, const QSize &size)
{
    return painted(size, [&](int x, int y) {
        return flattenedOn({0, 0, 0, 255}, cutout.at<Rgba>(y, x));
    });
}

QImage asAlpha(const cv::Mat &cutout, const QSize &size)
{
    return painted(size, [&](int x, int y) {
        const uchar alpha = cutout.at<Rgba>(y, x)[3];
        return Rgba(alpha, alpha, alpha, 255);
    });
}

QImage onGrid(const cv::Mat &cutout, const QSize &size)
{
    const int square = qMax(4, qRound(gridSquare * size.height() / 1080.0));
    std::vector<uchar> odd(static_cast<std::size_t>(qMax(size.width(), size.height())));
    for (std::size_t i = 0; i < odd.size(); ++i)
        odd[i] = (i / static_cast<std::size_t>(square)) % 2;
    return painted(size, [&](int x, int y) {
        const bool isLight = odd[static_cast<std::size_t>(x)] == odd[static_cast<std::size_t>(y)];
        const uchar grey = isLight ? gridLight : gridDark;
        return flattenedOn({grey, grey, grey, 255}, cutout.at<Rgba>(y, x));
    });
}

} // namespace

QImage composePreview(const RenderInput &input, const Look *look, const PreviewSettings &settings)
{
    if (input.frame.isNull() || (!input.matte.isNull() && input.matte.size() != input.frame.size()))
        return {};
    if (settings.type == PreviewType::Interactive && input.matte.isNull() && !settings.invert)
        return asItIs(input.frame);
    RenderInput shown = input;
    shown.matte = matteFor(input, settings.invert);
    if (settings.type == PreviewType::Interactive)
        return withOverlay(shown, settings);
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
