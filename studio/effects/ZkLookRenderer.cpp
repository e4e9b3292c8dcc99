#include "ZkLookRenderer.h"

#include "Matte_p.h"
#include "Pixels_p.h"
#include "Render_p.h"

namespace zk::effects {

namespace {

double timeOf(const RenderInput &input)
{
    return input.frameRate > 0 ? static_cast<double>(input.frameIndex) / input.frameRate : 0;
}

// The background, scaled to cover the size and cut about its middle.
QImage covering(const QImage &background, const QSize &size)
{
    const QImage scaled =
        background.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QPoint corner((scaled.width() - size.width()) / 2, (scaled.height() - size.height()) / 2);
    return scaled.copy(QRect(corner, size)).convertToFormat(QImage::Format_RGBA8888);
}

} // namespace

QImage renderCutout(const RenderInput &input, const Look &look)
{
    if (input.frame.isNull() || input.frame.size() != input.matte.size())
        return {};
    const QImage frame = input.frame.convertToFormat(QImage::Format_RGBA8888);
    const QImage matte = input.matte.convertToFormat(QImage::Format_Grayscale8);
    RenderJob job;
    job.frame = viewOf(frame);
    job.matte = viewOf(matte);
    job.scale = frame.height() / referenceHeight;
    job.time = timeOf(input);
    QImage result(frame.size(), QImage::Format_RGBA8888);
    if (result.isNull())
        return {};
    cv::Mat pixels = writableViewOf(result);
    renderInto(job, look, pixels);
    return result;
}

QImage applyMatteSettings(const QImage &matte, const MatteSettings &settings, int frameHeight)
{
    if (matte.isNull())
        return {};
    QImage result = matte.convertToFormat(QImage::Format_Grayscale8);
    const double height = frameHeight > 0 ? frameHeight : matte.height();
    const cv::Mat changed = withSettings(viewOf(result), settings, height / referenceHeight);
    if (changed.data != result.constBits()) {
        cv::Mat pixels = writableViewOf(result);
        changed.copyTo(pixels);
    }
    return result;
}

QImage invertedMatte(const QImage &matte)
{
    QImage result = matte.convertToFormat(QImage::Format_Grayscale8);
    result.invertPixels();
    return result;
}

QImage compositeOver(const QImage &cutout, const QColor &colour)
{
    if (cutout.isNull())
        return {};
    QImage result(cutout.size(), QImage::Format_RGBA8888);
    result.fill(colour);
    return compositeOver(cutout, result);
}

QImage compositeOver(const QImage &cutout, const QImage &background)
{
    if (cutout.isNull() || background.isNull())
        return {};
    const QImage above = cutout.convertToFormat(QImage::Format_RGBA8888);
    QImage result = background.size() == cutout.size()
        ? background.convertToFormat(QImage::Format_RGBA8888)
        : covering(background, cutout.size());
    cv::Mat canvas = writableViewOf(result);
    paintOver(canvas, viewOf(above));
    return result;
}

} // namespace zk::effects
