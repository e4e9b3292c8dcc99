#include "ZkVideoFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QThread>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstring>

namespace zk::media {

namespace {

// More threads do not decode 4K faster in practice, but every one of them holds a frame back, which
// makes each seek longer.
constexpr int MaxDecoderThreads = 4;

int firstVideoStream(const AVFormatContext &input)
{
    constexpr int NotVideo = AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS;
    for (unsigned i = 0; i < input.nb_streams; ++i) {
        const AVStream &stream = *input.streams[i];
        if (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO
            && (stream.disposition & NotVideo) == 0)
            return int(i);
    }
    return -1;
}

bool hasAudioStream(const AVFormatContext &input)
{
    return av_find_best_stream(
               const_cast<AVFormatContext *>(&input), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0)
        >= 0;
}

bool hasAlphaLayer(const AVStream &stream)
{
    const AVDictionaryEntry *mode = av_dict_get(stream.metadata, "alpha_mode", nullptr, 0);
    return mode && std::strcmp(mode->value, "1") == 0;
}

QString notAVideo(const QString &path)
{
    return QCoreApplication::translate("zk::media",
                                       "%1 is not a video or picture that can be read, or it is "
                                       "damaged; choose another file or export it again.")
        .arg(QDir::toNativeSeparators(path));
}

} // namespace

qint64 FrameClock::frameOf(int64_t stamp) const
{
    return av_rescale_q_rnd(stamp - start, timeBase, av_inv_q(rate), AV_ROUND_NEAR_INF);
}

int64_t FrameClock::stampOf(qint64 frame) const
{
    return start + av_rescale_q(frame, av_inv_q(rate), timeBase);
}

VideoFile::VideoFile(const QString &path)
    : m_path(path)
    , m_packet(av_packet_alloc())
{ }

std::unique_ptr<VideoFile> VideoFile::open(const QString &path, QString *error)
{
    std::unique_ptr<VideoFile> file(new VideoFile(path));
    if (!file->openStream(error))
        return nullptr;
    return file;
}

bool VideoFile::openStream(QString *error)
{
    int code = 0;
    m_input = openInput(m_path, &code);
    // libav would draw any text file as a terminal's screen.
    if (!m_input || std::strcmp(m_input->iformat->name, "tty") == 0) {
        *error = notAVideo(m_path);
        return false;
    }
    m_streamIndex = firstVideoStream(*m_input);
    if (m_streamIndex < 0 && hasAudioStream(*m_input)) {
        *error = QCoreApplication::translate(
                     "zk::media", "%1 has sound but no picture; choose a video or picture file.")
                     .arg(QDir::toNativeSeparators(m_path));
        return false;
    }
    if (m_streamIndex < 0 || !openDecoder()) {
        *error = notAVideo(m_path);
        return false;
    }
    return true;
}

const AVCodec *VideoFile::decoder() const
{
    const AVCodecID id = stream()->codecpar->codec_id;
    // libav's own VP8 and VP9 decoders drop the alpha layer.
    if (hasAlphaLayer(*stream()) && id == AV_CODEC_ID_VP9)
        return avcodec_find_decoder_by_name("libvpx-vp9");
    if (hasAlphaLayer(*stream()) && id == AV_CODEC_ID_VP8)
        return avcodec_find_decoder_by_name("libvpx");
    return avcodec_find_decoder(id);
}

bool VideoFile::openDecoder()
{
    const AVCodec *codec = decoder();
    if (!codec || stream()->codecpar->width <= 0 || stream()->codecpar->height <= 0)
        return false;
    m_codec.reset(avcodec_alloc_context3(codec));
    if (avcodec_parameters_to_context(m_codec.get(), stream()->codecpar) < 0)
        return false;
    m_codec->pkt_timebase = stream()->time_base;
    m_codec->thread_count = std::min(QThread::idealThreadCount(), MaxDecoderThreads);
    // Where every picture is a key frame (in FFV1 most often), one picture at a time makes a seek cost
    // just one.
    if (hasOnlyKeyFrames() || codec->id == AV_CODEC_ID_FFV1)
        m_codec->thread_type = FF_THREAD_SLICE;
    // Elsewhere a picture that is no reference may still hand on what it has learnt.
    m_canSkip = codec->id == AV_CODEC_ID_H264;
    return avcodec_open2(m_codec.get(), codec, nullptr) >= 0;
}

bool VideoFile::isPicture() const
{
    const char *name = m_input->iformat->name;
    return std::strcmp(name, "image2") == 0 || std::strstr(name, "_pipe") != nullptr;
}

bool VideoFile::hasOnlyKeyFrames() const
{
    const AVCodecDescriptor *codec = avcodec_descriptor_get(stream()->codecpar->codec_id);
    return codec && (codec->props & AV_CODEC_PROP_INTRA_ONLY) != 0;
}

bool VideoFile::hasAlpha() const
{
    const auto format = AVPixelFormat(stream()->codecpar->format);
    const AVPixFmtDescriptor *description = av_pix_fmt_desc_get(format);
    return hasAlphaLayer(*stream())
        || (description && (description->flags & AV_PIX_FMT_FLAG_ALPHA) != 0);
}

bool VideoFile::nextPacket(AVPacket *packet)
{
    av_packet_unref(packet);
    if (av_read_frame(m_input.get(), packet) < 0)
        return false;
    // Where pictures are not reordered, they are shown when they are decoded.
    if (packet->stream_index == m_streamIndex && packet->pts == AV_NOPTS_VALUE
        && stream()->codecpar->video_delay == 0)
        packet->pts = packet->dts;
    return true;
}

// Gives the decoder the next packet, or tells it once that there are no more.
bool VideoFile::feed()
{
    while (nextPacket(m_packet.get())) {
        if (m_packet->stream_index != m_streamIndex)
            continue;
        m_codec->skip_frame = discardOf(*m_packet);
        // A damaged packet costs its own picture, not the rest of the clip.
        avcodec_send_packet(m_codec.get(), m_packet.get());
        return true;
    }
    if (m_isDraining)
        return false;
    m_isDraining = true;
    return avcodec_send_packet(m_codec.get(), nullptr) >= 0;
}

AVDiscard VideoFile::discardOf(const AVPacket &packet)
{
    // Pictures between key frames cannot be placed in time without their own time stamps any more.
    m_canSkip = m_canSkip && packet.pts != AV_NOPTS_VALUE;
    const bool isSkipped = m_skipBefore != AV_NOPTS_VALUE && packet.pts < m_skipBefore;
    return isSkipped && canSkip() ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
}

FramePtr VideoFile::nextPicture()
{
    FramePtr picture(av_frame_alloc());
    for (;;) {
        const int code = avcodec_receive_frame(m_codec.get(), picture.get());
        if (code >= 0 && placeInTime(picture.get()))
            return picture;
        if (code == AVERROR_EOF || (code == AVERROR(EAGAIN) && !feed()))
            return nullptr;
    }
}

// Pictures come in the order in which they are shown: one without a time stamp follows the one before
// it. libav's own guess would be when it was decoded, which is earlier. False for a picture after a seek
// whose place is not known.
bool VideoFile::placeInTime(AVFrame *picture)
{
    const bool isStamped = picture->pts != AV_NOPTS_VALUE && !m_isUntimed;
    const int64_t stamp = isStamped ? picture->pts : m_nextStamp;
    picture->best_effort_timestamp = stamp;
    if (stamp == AV_NOPTS_VALUE)
        return false;
    m_nextStamp = stamp + (m_isUntimed ? 1 : std::max<int64_t>(picture->pkt_duration, 0));
    return true;
}

void VideoFile::setUntimed(bool isUntimed)
{
    m_isUntimed = isUntimed;
}

int64_t VideoFile::stampOf(const AVFrame &picture)
{
    return picture.best_effort_timestamp;
}

void VideoFile::flush()
{
    avcodec_flush_buffers(m_codec.get());
    m_isDraining = false;
    m_nextStamp = AV_NOPTS_VALUE;
}

bool VideoFile::seek(int64_t stamp)
{
    flush();
    return !m_isUntimed
        && av_seek_frame(m_input.get(), m_streamIndex, stamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

bool VideoFile::rewind()
{
    flush();
    m_nextStamp = m_isUntimed ? 0 : AV_NOPTS_VALUE;
    // Broadcast streams look for a time stamp by bisection and miss their first picture.
    if ((m_input->iformat->flags & AVFMT_TS_DISCONT) != 0)
        return av_seek_frame(m_input.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0;
    const int64_t start = stream()->start_time == AV_NOPTS_VALUE ? 0 : stream()->start_time;
    return av_seek_frame(m_input.get(), m_streamIndex, start, AVSEEK_FLAG_BACKWARD) >= 0
        || reopen();
}

bool VideoFile::reopen()
{
    flush();
    m_nextStamp = m_isUntimed ? 0 : AV_NOPTS_VALUE;
    int code = 0;
    InputPtr input = openInput(m_path, &code);
    // The file may have been replaced by another one in the meantime.
    if (!input || m_streamIndex >= int(input->nb_streams))
        return false;
    m_input = std::move(input);
    return true;
}

} // namespace zk::media
