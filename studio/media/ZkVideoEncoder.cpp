#include "ZkVideoEncoder.h"

#include "ZkColourTags.h"

#include <QSize>

namespace zk::media {

namespace {

// Doubles the last column and row where the format needs an even size.
QImage padded(const QImage &image, const QSize &size)
{
    if (image.size() == size)
        return image;
    QImage result = image.copy(QRect(QPoint(0, 0), size));
    for (int y = 0; y < result.height(); ++y) {
        const int sourceRow = qMin(y, image.height() - 1);
        const auto *source = reinterpret_cast<const quint32 *>(image.constScanLine(sourceRow));
        auto *target = reinterpret_cast<quint32 *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x)
            target[x] = source[qMin(x, image.width() - 1)];
    }
    return result;
}

// Colour is halved only where it was so before, which makes files that are decoded and shown twice as fast;
// and never at odd sizes, which halved colour cannot have.
AVPixelFormat pixelFormatFor(const OutputSettings &settings,
                             const OutputProfile &profile,
                             const ColourTags &source)
{
    const bool isEven = settings.size.width() % 2 == 0 && settings.size.height() % 2 == 0;
    return settings.format == OutputFormat::H264Mkv && isEven && source.isHalved
        ? AV_PIX_FMT_YUV420P
        : profile.pixelFormat;
}

} // namespace

VideoEncoder::VideoEncoder(Muxer &muxer)
    : m_muxer(muxer)
    , m_stream(muxer.addStream())
    , m_picture(av_frame_alloc())
    , m_packet(av_packet_alloc())
{ }

std::unique_ptr<VideoEncoder>
VideoEncoder::create(Muxer &muxer, const OutputSettings &settings, QString *error)
{
    std::unique_ptr<VideoEncoder> encoder(new VideoEncoder(muxer));
    return encoder->open(settings, error) ? std::move(encoder) : nullptr;
}

void VideoEncoder::configure(const OutputSettings &settings, const OutputProfile &profile)
{
    const QSize size = encodedSize(settings.format, settings.size);
    m_codec->width = size.width();
    m_codec->height = size.height();
    const ColourTags tags = settings.colourSourcePath.isEmpty()
        ? ColourTags()
        : ColourTags::ofFile(settings.colourSourcePath);
    m_codec->pix_fmt = pixelFormatFor(settings, profile, tags);
    m_codec->framerate = {settings.frameRateNum, settings.frameRateDen};
    m_codec->time_base = av_inv_q(m_codec->framerate);
    m_codec->sample_aspect_ratio = {1, 1};
    m_codec->thread_count = 0;
    if (m_muxer.wantsGlobalHeader())
        m_codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (profile.pixelFormat == AV_PIX_FMT_BGRA)
        return;
    m_codec->colorspace = tags.matrix;
    m_codec->color_primaries = tags.primaries;
    m_codec->color_trc = tags.transfer;
    // The others have no full range.
    m_codec->color_range = m_codec->codec_id == AV_CODEC_ID_H264 ? tags.range : AVCOL_RANGE_MPEG;
}

bool VideoEncoder::open(const OutputSettings &settings, QString *error)
{
    const OutputProfile &profile = profileOf(settings.format);
    const AVCodec *codec = avcodec_find_encoder_by_name(profile.videoEncoder);
    if (!codec) {
        *error = writeFailure(AVERROR_ENCODER_NOT_FOUND);
        return false;
    }
    m_codec.reset(avcodec_alloc_context3(codec));
    configure(settings, profile);
    AVDictionary *options = dictionary(profile.videoOptions);
    int code = avcodec_open2(m_codec.get(), codec, &options);
    av_dict_free(&options);
    if (code >= 0)
        code = avcodec_parameters_from_context(m_stream->codecpar, m_codec.get());
    if (code < 0 || !preparePicture(settings)) {
        *error = writeFailure(code < 0 ? code : AVERROR(EINVAL));
        return false;
    }
    m_stream->time_base = m_codec->time_base;
    m_stream->avg_frame_rate = m_codec->framerate;
    if (settings.format == OutputFormat::Vp9Webm)
        av_dict_set(&m_stream->metadata, "alpha_mode", "1", 0);
    return true;
}

bool VideoEncoder::preparePicture(const OutputSettings &settings)
{
    m_picture->format = m_codec->pix_fmt;
    m_picture->width = m_codec->width;
    m_picture->height = m_codec->height;
    m_picture->color_range = m_codec->color_range;
    m_picture->colorspace = m_codec->colorspace;
    const QSize size = encodedSize(settings.format, settings.size);
    m_scaler.reset(sws_getContext(size.width(),
                                  size.height(),
                                  AV_PIX_FMT_RGBA,
                                  size.width(),
                                  size.height(),
                                  m_codec->pix_fmt,
                                  SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP,
                                  nullptr,
                                  nullptr,
                                  nullptr));
    if (!m_scaler)
        return false;
    const int *matrix = sws_getCoefficients(matrixFor(m_codec->colorspace, size.height()));
    const int isFullRange = m_codec->color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    sws_setColorspaceDetails(m_scaler.get(), matrix, 1, matrix, isFullRange, 0, 1 << 16, 1 << 16);
    return av_frame_get_buffer(m_picture.get(), 0) >= 0;
}

void VideoEncoder::convert(const QImage &image)
{
    const QImage source = padded(image, {m_codec->width, m_codec->height});
    const uint8_t *planes[4] = {source.constBits()};
    const int strides[4] = {source.bytesPerLine()};
    sws_scale(
        m_scaler.get(), planes, strides, 0, source.height(), m_picture->data, m_picture->linesize);
}

bool VideoEncoder::encode(const QImage &image, QString *error)
{
    // The encoder may still hold the last picture's buffer.
    int code = av_frame_make_writable(m_picture.get());
    if (code >= 0) {
        convert(image);
        m_picture->pts = m_nextFrame++;
        code = avcodec_send_frame(m_codec.get(), m_picture.get());
    }
    if (code < 0) {
        *error = writeFailure(code);
        return false;
    }
    return drain(error);
}

bool VideoEncoder::flush(QString *error)
{
    avcodec_send_frame(m_codec.get(), nullptr);
    return drain(error);
}

bool VideoEncoder::drain(QString *error)
{
    for (;;) {
        const int code = avcodec_receive_packet(m_codec.get(), m_packet.get());
        if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
            return true;
        if (code < 0) {
            *error = writeFailure(code);
            return false;
        }
        // Containers that store durations would give the last picture none.
        m_packet->duration = 1;
        if (!m_muxer.write(m_packet.get(), *m_stream, m_codec->time_base, error))
            return false;
    }
}

} // namespace zk::media
