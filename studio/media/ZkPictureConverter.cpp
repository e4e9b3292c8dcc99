#include "ZkPictureConverter.h"

#include <QTransform>

extern "C" {
#include <libavutil/opt.h>
}

namespace zk::media {

namespace {

// libswscale writes whole vectors: rows and buffers are padded to the widest.
constexpr int Alignment = 64;

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

// The limit below which an untagged picture is taken for standard definition.
constexpr int StandardDefinitionHeight = 576;

int colourMatrix(const AVFrame &picture)
{
    if (picture.colorspace != AVCOL_SPC_UNSPECIFIED && picture.colorspace != AVCOL_SPC_RGB)
        return picture.colorspace;
    return picture.height > StandardDefinitionHeight ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

void setColours(SwsContext *scaler, const AVFrame &picture)
{
    const int *source = sws_getCoefficients(colourMatrix(picture));
    const int *target = sws_getCoefficients(SWS_CS_DEFAULT);
    const int isFullRange = picture.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    sws_setColorspaceDetails(scaler, source, isFullRange, target, 1, 0, 1 << 16, 1 << 16);
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
    m_scaler.reset(sws_getContext(size.width(),
                                  size.height(),
                                  AVPixelFormat(picture.format),
                                  m_size.width(),
                                  m_size.height(),
                                  AV_PIX_FMT_RGBA,
                                  SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT,
                                  nullptr,
                                  nullptr,
                                  nullptr));
    if (!m_scaler)
        return false;
    setColours(m_scaler.get(), picture);
    m_sourceFormat = picture.format;
    m_sourceSize = size;
    return true;
}

QImage PictureConverter::convert(const AVFrame &picture)
{
    QImage image = alignedImage(m_size);
    if (image.isNull() || !prepare(picture))
        return {};
    uint8_t *planes[4] = {image.bits()};
    const int strides[4] = {image.bytesPerLine()};
    const int rows = sws_scale(
        m_scaler.get(), picture.data, picture.linesize, 0, picture.height, planes, strides);
    if (rows <= 0)
        return {};
    return m_rotation == 0 ? image : image.transformed(QTransform().rotate(m_rotation));
}

} // namespace zk::media
