#include "ZkSoundSource.h"

#include <QCoreApplication>
#include <QDir>

namespace zk::media {

SoundSource::SoundSource(InputPtr input, int streamIndex)
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
}

std::unique_ptr<SoundSource> SoundSource::open(const QString &path, QString *error)
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
    return std::unique_ptr<SoundSource>(new SoundSource(std::move(input), stream));
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
