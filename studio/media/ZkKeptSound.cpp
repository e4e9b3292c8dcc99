#include "ZkKeptSound.h"

namespace zk::media {

namespace {

// Decoders need what encoders put before the start, and players skip it; anything earlier is sound from
// before the first picture.
constexpr double LongestPriming = 0.05; // seconds

} // namespace

KeptSound::KeptSound(Muxer &muxer, std::unique_ptr<SoundSource> source)
    : m_muxer(muxer)
    , m_source(std::move(source))
    , m_stream(muxer.addStream())
    , m_packet(av_packet_alloc())
{ }

std::unique_ptr<SoundTrack>
KeptSound::create(Muxer &muxer, std::unique_ptr<SoundSource> source, QString *error)
{
    std::unique_ptr<KeptSound> track(new KeptSound(muxer, std::move(source)));
    const AVStream &from = track->m_source->stream();
    const int code = avcodec_parameters_copy(track->m_stream->codecpar, from.codecpar);
    if (code < 0) {
        *error = writeFailure(code);
        return nullptr;
    }
    // The tag names the codec in the source's kind of container; the new one has its own.
    track->m_stream->codecpar->codec_tag = 0;
    track->m_stream->time_base = from.time_base;
    track->fetch();
    return track;
}

void KeptSound::fetch()
{
    do {
        m_hasPacket = m_source->next(m_packet.get());
    } while (
        m_hasPacket
        && (m_packet->pts == AV_NOPTS_VALUE || m_source->secondsOf(*m_packet) < -LongestPriming));
}

bool KeptSound::writeUntil(double seconds, QString *error)
{
    while (m_hasPacket && m_source->secondsOf(*m_packet) < seconds) {
        if (!m_muxer.write(m_packet.get(), *m_stream, m_source->stream().time_base, error))
            return false;
        fetch();
    }
    return true;
}

bool KeptSound::finish(double seconds, QString *error)
{
    return writeUntil(seconds, error);
}

} // namespace zk::media
