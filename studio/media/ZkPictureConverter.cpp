#include "ZkPictureConverter.h"

#include "ZkColourTags.h"
#include "ZkYuvPicture.h"

#include <QThread>
#include <QTransform>

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>

namespace zk::media {

namespace {

// libswscale writes whole vectors: rows and buffers are padded to the widest.
constexpr int Alignment = 64;
constexpr int MaxThreads = 4;
// Colour is brought to every pixel: a cutout's edge shows where it is only repeated.
constexpr int Quality = SWS_BILINEAR | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;

QImage alignedImage(const QSize &size)
{
    const int stride = (size.width() * 4 + Alignment - 1) / Alignment * Alignment;
    auto *pixels =
        static_cast<uchar *>(av_malloc(size_t(stride) * size_t(size.height()) + Alignment));
    if (!pixels)
        return {};
    return QImage(
        pixels, size.width(), size.height(), stride, QImage::Format_RGBA8888, av_free, pixels);
}

// A frame that lends the image's pixels to libav; it must not outlive the image.
FramePtr frameOver(QImage *image)
{
    FramePtr frame(av_frame_alloc());
    frame->format = AV_PIX_FMT_RGBA;
    frame->width = image->width();
    frame->height = image->height();
    frame->data[0] = image->bits();
    frame->linesize[0] = image->bytesPerLine();
    const auto keep = [](void *, uint8_t *) {};
    frame->buf[0] =
        av_buffer_create(frame->data[0], size_t(image->sizeInBytes()), keep, nullptr, 0);
    return frame->buf[0] ? std::move(frame) : nullptr;
}

bool isFullRange(const AVFrame &picture)
{
    return picture.color_range == AVCOL_RANGE_JPEG || picture.format == AV_PIX_FMT_YUVJ420P;
}

void setColours(SwsContext *scaler, const AVFrame &picture)
{
    const int *source = sws_getCoefficients(matrixFor(picture.colorspace, picture.height));
    const int *target = sws_getCoefficients(SWS_CS_DEFAULT);
    const int range = isFullRange(picture) ? 1 : 0;
    sws_setColorspaceDetails(scaler, source, range, target, 1, 0, 1 << 16, 1 << 16);
}

} // namespace

PictureConverter::PictureConverter(const QSize &squareSize, int rotation)
    : m_size(squareSize)
    , m_rotation(rotation)
{ }

bool PictureConverter::prepare(const AVFrame &picture)
{
    const QSize size(picture.width, picture.height);
    if (m_scaler && picture.format == m_sourceFormat && size == m_sourceSize)
        return true;
    m_scaler.reset(sws_alloc_context());
    SwsContext *scaler = m_scaler.get();
    av_opt_set_int(scaler, "srcw", size.width(), 0);
    av_opt_set_int(scaler, "srch", size.height(), 0);
    av_opt_set_int(scaler, "src_format", picture.format, 0);
    av_opt_set_int(scaler, "dstw", m_size.width(), 0);
    av_opt_set_int(scaler, "dsth", m_size.height(), 0);
    av_opt_set_int(scaler, "dst_format", AV_PIX_FMT_RGBA, 0);
    av_opt_set_int(scaler, "sws_flags", Quality, 0);
    av_opt_set_int(scaler, "threads", std::min(QThread::idealThreadCount(), MaxThreads), 0);
    if (sws_init_context(scaler, nullptr, nullptr) < 0) {
        m_scaler.reset();
        return false;
    }
    setColours(scaler, picture);
    m_sourceFormat = picture.format;
    m_sourceSize = size;
    return true;
}

bool PictureConverter::convertInto(const AVFrame &picture, QImage *image)
{
    if (isPlainYuv(picture) && m_size == QSize(picture.width, picture.height)) {
        const int *coefficients =
            sws_getCoefficients(matrixFor(picture.colorspace, picture.height));
        convertYuv(picture, YuvColours(coefficients, isFullRange(picture)), image);
        return true;
    }
    if (!prepare(picture))
        return false;
    const FramePtr target = frameOver(image);
    return target && sws_scale_frame(m_scaler.get(), target.get(), &picture) >= 0;
}

QImage PictureConverter::convert(const AVFrame &picture)
{
    QImage image = alignedImage(m_size);
    if (image.isNull() || !convertInto(picture, &image))
        return {};
    return m_rotation == 0 ? image : image.transformed(QTransform().rotate(m_rotation));
}

} // namespace zk::media
