#include "ZkSoundSource.h"

#include <QCoreApplication>
#include <QDir>

#include <cmath>

namespace zk::media {

namespace {

// Seconds of sound before the moment that decoders get to settle.
constexpr double SeekLead = 0.2;

} // namespace

SoundSource::SoundSource(InputPtr input, int streamIndex, double start)
    : m_input(std::move(input))
    , m_streamIndex(streamIndex)
{
    const int video = av_find_best_stream(m_input.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    const AVStream &reference = *m_input->streams[video >= 0 ? video : streamIndex];
    if (reference.start_time != AV_NOPTS_VALUE)
        m_origin = av_rescale_q(reference.start_time, reference.time_base, stream().time_base);
    for (unsigned i = 0; i < m_input->nb_streams; ++i) {
        if (int(i) != streamIndex)
            m_input->streams[i]->discard = AVDISCARD_ALL;
    }
    if (start <= 0)
        return;
    m_origin += int64_t(std::llround(start / av_q2d(stream().time_base)));
    // Where the format cannot seek, what comes before the moment is read and dropped.
    const auto lead = int64_t(std::llround(SeekLead / av_q2d(stream().time_base)));
    av_seek_frame(m_input.get(), streamIndex, m_origin - lead, AVSEEK_FLAG_BACKWARD);
}

std::unique_ptr<SoundSource> SoundSource::open(const QString &path, double start, QString *error)
{
    int code = 0;
    InputPtr input = openInput(path, &code);
    if (!input) {
        *error = QCoreApplication::translate("zk::media",
                                             "The sound of %1 cannot be read (%2); choose another "
                                             "source or export without sound.")
                     .arg(QDir::toNativeSeparators(path), avErrorText(code));
        return nullptr;
    }
    const int stream = av_find_best_stream(input.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (stream < 0)
        return nullptr;
    return std::unique_ptr<SoundSource>(new SoundSource(std::move(input), stream, start));
}

bool SoundSource::next(AVPacket *packet)
{
    do {
        av_packet_unref(packet);
        if (av_read_frame(m_input.get(), packet) < 0)
            return false;
    } while (packet->stream_index != m_streamIndex);
    if (packet->pts == AV_NOPTS_VALUE)
        packet->pts = packet->dts;
    if (packet->pts != AV_NOPTS_VALUE)
        packet->pts -= m_origin;
    packet->dts = packet->pts;
    return true;
}

double SoundSource::secondsOf(const AVPacket &packet) const
{
    return double(packet.pts) * av_q2d(stream().time_base);
}

} // namespace zk::media
