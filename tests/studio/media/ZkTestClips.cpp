#include "ZkTestClips.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>

#include <cmath>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace zk::test {

namespace {

constexpr int Bits = 8;

struct Deleter
{
    void operator()(AVFormatContext *context) const
    {
        if (context->oformat) {
            avio_closep(&context->pb);
            avformat_free_context(context);
        } else {
            avformat_close_input(&context);
        }
    }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

template<typename T>
using Ptr = std::unique_ptr<T, Deleter>;

class ClipFile
{
public:
    bool open(const QString &path, const ClipSpec &spec);
    bool write(const QImage &image, int time);
    bool finish();

private:
    bool openEncoder(const ClipSpec &spec);
    void setRotation(int degrees);
    bool drain();

    Ptr<AVFormatContext> m_file;
    Ptr<AVCodecContext> m_codec;
    Ptr<AVFrame> m_picture {av_frame_alloc()};
    Ptr<AVPacket> m_packet {av_packet_alloc()};
    Ptr<SwsContext> m_scaler;
    AVStream *m_stream = nullptr;
};

bool ClipFile::openEncoder(const ClipSpec &spec)
{
    const AVCodec *codec = avcodec_find_encoder_by_name(spec.encoder);
    m_codec.reset(avcodec_alloc_context3(codec));
    m_codec->width = spec.size.width();
    m_codec->height = spec.size.height();
    m_codec->pix_fmt = av_get_pix_fmt(spec.pixelFormat);
    m_codec->framerate = {spec.frameRateNum, spec.frameRateDen};
    m_codec->time_base = av_inv_q(m_codec->framerate);
    m_codec->gop_size = spec.keyInterval;
    m_codec->max_b_frames = spec.reorderedFrames;
    m_codec->sample_aspect_ratio = {spec.pixelAspectNum, spec.pixelAspectDen};
    m_codec->bit_rate = 1000000;
    if (spec.matrix)
        m_codec->colorspace = AVColorSpace(av_color_space_from_name(spec.matrix));
    if (spec.range)
        m_codec->color_range = AVColorRange(av_color_range_from_name(spec.range));
    if ((m_file->oformat->flags & AVFMT_GLOBALHEADER) != 0)
        m_codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_opt_set(m_codec->priv_data, "preset", "veryfast", 0);
    return avcodec_open2(m_codec.get(), codec, nullptr) >= 0;
}

bool ClipFile::open(const QString &path, const ClipSpec &spec)
{
    AVFormatContext *file = nullptr;
    const QByteArray name = path.toUtf8();
    if (avformat_alloc_output_context2(&file, nullptr, nullptr, name.constData()) < 0)
        return false;
    m_file.reset(file);
    m_stream = avformat_new_stream(file, nullptr);
    if (!openEncoder(spec) || avio_open(&file->pb, name.constData(), AVIO_FLAG_WRITE) < 0)
        return false;
    avcodec_parameters_from_context(m_stream->codecpar, m_codec.get());
    m_stream->time_base = m_codec->time_base;
    m_stream->sample_aspect_ratio = m_codec->sample_aspect_ratio;
    if (spec.times.isEmpty())
        m_stream->avg_frame_rate = m_codec->framerate;
    setRotation(spec.rotation);
    m_picture->format = m_codec->pix_fmt;
    m_picture->width = m_codec->width;
    m_picture->height = m_codec->height;
    m_scaler.reset(sws_getContext(m_codec->width,
                                  m_codec->height,
                                  AV_PIX_FMT_RGBA,
                                  m_codec->width,
                                  m_codec->height,
                                  m_codec->pix_fmt,
                                  SWS_BICUBIC,
                                  nullptr,
                                  nullptr,
                                  nullptr));
    AVDictionary *options = nullptr;
    if (spec.indexFirst)
        av_dict_set(&options, "movflags", "+faststart", 0);
    const int code = avformat_write_header(file, &options);
    av_dict_free(&options);
    return code >= 0 && av_frame_get_buffer(m_picture.get(), 0) >= 0;
}

void ClipFile::setRotation(int degrees)
{
    if (degrees == 0)
        return;
    auto *matrix = reinterpret_cast<int32_t *>(
        av_stream_new_side_data(m_stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(int32_t)));
    av_display_rotation_set(matrix, degrees);
}

bool ClipFile::write(const QImage &image, int time)
{
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
    const uint8_t *planes[4] = {rgba.constBits()};
    const int strides[4] = {rgba.bytesPerLine()};
    av_frame_make_writable(m_picture.get());
    sws_scale(
        m_scaler.get(), planes, strides, 0, rgba.height(), m_picture->data, m_picture->linesize);
    m_picture->pts = time;
    return avcodec_send_frame(m_codec.get(), m_picture.get()) >= 0 && drain();
}

bool ClipFile::drain()
{
    while (avcodec_receive_packet(m_codec.get(), m_packet.get()) >= 0) {
        // Without it an MP4 ends where its last picture begins.
        m_packet->duration = 1;
        av_packet_rescale_ts(m_packet.get(), m_codec->time_base, m_stream->time_base);
        if (av_interleaved_write_frame(m_file.get(), m_packet.get()) < 0)
            return false;
    }
    return true;
}

bool ClipFile::finish()
{
    avcodec_send_frame(m_codec.get(), nullptr);
    return drain() && av_write_trailer(m_file.get()) >= 0;
}

void measure(const AVFrame &frame, double start, Sound *sound)
{
    constexpr int Loud = 4000; // of 32767
    const auto *samples = reinterpret_cast<const float *>(frame.data[0]);
    const auto *integers = reinterpret_cast<const int16_t *>(frame.data[0]);
    const bool isFloat = frame.format == AV_SAMPLE_FMT_FLTP || frame.format == AV_SAMPLE_FMT_FLT;
    for (int i = 0; i < frame.nb_samples && sound->onset < 0; ++i) {
        const double level = isFloat ? samples[i] * 32767.0 : integers[i];
        if (std::abs(level) > Loud)
            sound->onset = start + double(i) / frame.sample_rate;
    }
    sound->seconds = start + double(frame.nb_samples) / frame.sample_rate;
}

} // namespace

QImage numberedImage(int number, const QSize &size)
{
    QImage image(size, QImage::Format_RGBA8888);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool isSet = (number >> (x * Bits / size.width()) & 1) != 0;
            image.setPixelColor(x, y, isSet ? Qt::white : Qt::black);
        }
    }
    return image;
}

int numberIn(const QImage &image)
{
    int number = image.isNull() ? -1 : 0;
    for (int bit = 0; bit < Bits && !image.isNull(); ++bit) {
        const int x = (2 * bit + 1) * image.width() / (2 * Bits);
        if (qGreen(image.pixel(x, image.height() / 2)) > 127)
            number |= 1 << bit;
    }
    return number;
}

bool writeClip(const QString &path, const ClipSpec &spec)
{
    av_log_set_level(AV_LOG_ERROR);
    ClipFile file;
    if (!file.open(path, spec))
        return false;
    for (int i = 0; i < spec.frames; ++i) {
        if (!file.write(numberedImage(i, spec.size), spec.times.value(i, i)))
            return false;
    }
    return file.finish();
}

bool writeTone(const QString &path, double seconds, double silence)
{
    constexpr int Rate = 44100;
    const auto samples = int(seconds * Rate);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + samples * 2);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(1) << quint32(Rate) << quint32(Rate * 2)
           << quint16(2) << quint16(16);
    stream.writeRawData("data", 4);
    stream << quint32(samples * 2);
    for (int i = 0; i < samples; ++i)
        stream << qint16(i < silence * Rate ? 0 : 16000 * std::sin(i * 0.0627));
    return true;
}

Sound soundOf(const QString &path)
{
    AVFormatContext *context = nullptr;
    if (avformat_open_input(&context, path.toUtf8().constData(), nullptr, nullptr) < 0)
        return {};
    const Ptr<AVFormatContext> file(context);
    avformat_find_stream_info(context, nullptr);
    const AVCodec *decoder = nullptr;
    const int index = av_find_best_stream(context, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    if (index < 0)
        return {};
    Sound sound;
    sound.codec = QString::fromLatin1(avcodec_get_name(decoder->id));
    const Ptr<AVCodecContext> codec(avcodec_alloc_context3(decoder));
    avcodec_parameters_to_context(codec.get(), context->streams[index]->codecpar);
    codec->pkt_timebase = context->streams[index]->time_base;
    avcodec_open2(codec.get(), decoder, nullptr);
    const Ptr<AVPacket> packet(av_packet_alloc());
    const Ptr<AVFrame> frame(av_frame_alloc());
    QCryptographicHash hash(QCryptographicHash::Sha1);
    while (av_read_frame(context, packet.get()) >= 0) {
        if (packet->stream_index == index) {
            hash.addData(reinterpret_cast<const char *>(packet->data), packet->size);
            avcodec_send_packet(codec.get(), packet.get());
        }
        while (avcodec_receive_frame(codec.get(), frame.get()) >= 0) {
            const double start =
                double(frame->best_effort_timestamp) * av_q2d(context->streams[index]->time_base);
            measure(*frame, start, &sound);
        }
        av_packet_unref(packet.get());
    }
    sound.packets = hash.result();
    return sound;
}

QString colourTagsOf(const QString &path)
{
    AVFormatContext *context = nullptr;
    if (avformat_open_input(&context, path.toUtf8().constData(), nullptr, nullptr) < 0)
        return {};
    const Ptr<AVFormatContext> file(context);
    avformat_find_stream_info(context, nullptr);
    const int index = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (index < 0)
        return {};
    const AVCodecParameters &codec = *context->streams[index]->codecpar;
    return QStringLiteral("%1/%2/%3/%4")
        .arg(QLatin1String(av_color_space_name(codec.color_space)),
             QLatin1String(av_color_primaries_name(codec.color_primaries)),
             QLatin1String(av_color_transfer_name(codec.color_trc)),
             QLatin1String(av_color_range_name(codec.color_range)));
}

} // namespace zk::test
