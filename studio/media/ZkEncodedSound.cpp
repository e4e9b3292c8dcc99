#include "ZkEncodedSound.h"

#include <algorithm>
#include <cmath>

namespace zk::media {

namespace {

// Time stamps jitter by less than this without anything missing.
constexpr double LongestJitter = 0.1; // seconds
// For encoders that take any number of samples at a time.
constexpr int DefaultFrameSize = 1024;
constexpr int64_t BitRate = 192000;
constexpr int PreferredSampleRate = 48000;

int sampleRateFor(const AVCodec &codec, int wanted)
{
    const int *rates = codec.supported_samplerates;
    if (!rates)
        return wanted;
    for (; *rates != 0; ++rates) {
        if (*rates == wanted)
            return wanted;
    }
    return PreferredSampleRate;
}

// Layouts of more channels than 5.1 are not known to every encoder.
int channelsFor(int sourceChannels)
{
    constexpr int MaxChannels = 6;
    return sourceChannels <= MaxChannels ? sourceChannels : 2;
}

FramePtr soundFrame(const AVCodecContext &codec, int samples)
{
    FramePtr frame(av_frame_alloc());
    frame->format = codec.sample_fmt;
    frame->sample_rate = codec.sample_rate;
    frame->nb_samples = samples;
    if (av_channel_layout_copy(&frame->ch_layout, &codec.ch_layout) < 0
        || av_frame_get_buffer(frame.get(), 0) < 0)
        return nullptr;
    return frame;
}

} // namespace

EncodedSound::EncodedSound(Muxer &muxer, std::unique_ptr<SoundSource> source)
    : m_muxer(muxer)
    , m_source(std::move(source))
    , m_stream(muxer.addStream())
    , m_packet(av_packet_alloc())
    , m_sound(av_frame_alloc())
{ }

std::unique_ptr<SoundTrack> EncodedSound::create(Muxer &muxer,
                                                 const OutputProfile &profile,
                                                 std::unique_ptr<SoundSource> source,
                                                 QString *error)
{
    std::unique_ptr<EncodedSound> track(new EncodedSound(muxer, std::move(source)));
    int code = track->openDecoder();
    if (code >= 0)
        code = track->openEncoder(profile.audioEncoder);
    if (code >= 0)
        code = track->openResampler();
    if (code < 0) {
        *error = writeFailure(code);
        return nullptr;
    }
    return track;
}

int EncodedSound::openDecoder()
{
    const AVStream &stream = m_source->stream();
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!codec)
        return AVERROR_DECODER_NOT_FOUND;
    m_decoder.reset(avcodec_alloc_context3(codec));
    const int code = avcodec_parameters_to_context(m_decoder.get(), stream.codecpar);
    m_decoder->pkt_timebase = stream.time_base;
    return code < 0 ? code : avcodec_open2(m_decoder.get(), codec, nullptr);
}

int EncodedSound::openEncoder(const char *name)
{
    const AVCodec *codec = avcodec_find_encoder_by_name(name);
    if (!codec)
        return AVERROR_ENCODER_NOT_FOUND;
    m_encoder.reset(avcodec_alloc_context3(codec));
    m_encoder->sample_fmt = codec->sample_fmts[0];
    m_encoder->sample_rate = sampleRateFor(*codec, m_decoder->sample_rate);
    m_encoder->time_base = {1, m_encoder->sample_rate};
    m_encoder->bit_rate = BitRate;
    av_channel_layout_default(&m_encoder->ch_layout, channelsFor(m_decoder->ch_layout.nb_channels));
    if (m_muxer.wantsGlobalHeader())
        m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const int code = avcodec_open2(m_encoder.get(), codec, nullptr);
    m_stream->time_base = m_encoder->time_base;
    return code < 0 ? code : avcodec_parameters_from_context(m_stream->codecpar, m_encoder.get());
}

int EncodedSound::openResampler()
{
    AVChannelLayout layout = {};
    if (m_decoder->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&layout, m_decoder->ch_layout.nb_channels);
    else
        av_channel_layout_copy(&layout, &m_decoder->ch_layout);
    SwrContext *resampler = nullptr;
    const int code = swr_alloc_set_opts2(&resampler,
                                         &m_encoder->ch_layout,
                                         m_encoder->sample_fmt,
                                         m_encoder->sample_rate,
                                         &layout,
                                         m_decoder->sample_fmt,
                                         m_decoder->sample_rate,
                                         0,
                                         nullptr);
    av_channel_layout_uninit(&layout);
    m_resampler.reset(resampler);
    m_fifo.reset(av_audio_fifo_alloc(m_encoder->sample_fmt, m_encoder->ch_layout.nb_channels, 1));
    return code < 0 ? code : swr_init(resampler);
}

qint64 EncodedSound::samplesIn(double seconds) const
{
    return std::llround(seconds * m_encoder->sample_rate);
}

// Decodes one more piece into the queue; false when there is no more.
bool EncodedSound::decodeMore()
{
    while (!m_isAtEnd) {
        const int code = avcodec_receive_frame(m_decoder.get(), m_sound.get());
        if (code >= 0) {
            take(*m_sound);
            return true;
        }
        m_isAtEnd = code == AVERROR_EOF;
        if (code == AVERROR(EAGAIN)) {
            // A damaged packet is a gap, and gaps become silence.
            const bool hasPacket = m_source->next(m_packet.get());
            avcodec_send_packet(m_decoder.get(), hasPacket ? m_packet.get() : nullptr);
        }
    }
    resample(nullptr);
    return false;
}

void EncodedSound::take(const AVFrame &sound)
{
    const int64_t stamp = sound.best_effort_timestamp;
    if (stamp != AV_NOPTS_VALUE) {
        const double seconds = double(stamp) * av_q2d(m_source->stream().time_base);
        const qint64 delay = swr_get_delay(m_resampler.get(), m_encoder->sample_rate);
        const qint64 missing = samplesIn(seconds) - (m_queued + delay - m_skipped);
        if (missing < 0 && !m_isPlaced)
            m_skipped = -missing;
        else if (missing > (m_isPlaced ? samplesIn(LongestJitter) : 0))
            addSilence(missing);
    }
    m_isPlaced = true;
    resample(&sound);
}

// Null takes out what the resampler still holds.
void EncodedSound::resample(const AVFrame *sound)
{
    const int incoming = sound ? sound->nb_samples : 0;
    const int room = swr_get_out_samples(m_resampler.get(), incoming);
    const FramePtr frame = room > 0 ? soundFrame(*m_encoder, room) : nullptr;
    if (!frame)
        return;
    auto **data = sound ? const_cast<const uint8_t **>(sound->extended_data) : nullptr;
    const int samples = swr_convert(m_resampler.get(), frame->extended_data, room, data, incoming);
    if (samples <= 0)
        return;
    av_audio_fifo_write(m_fifo.get(), reinterpret_cast<void **>(frame->extended_data), samples);
    m_queued += samples;
    const int early = int(std::min<qint64>(m_skipped, av_audio_fifo_size(m_fifo.get())));
    av_audio_fifo_drain(m_fifo.get(), early);
    m_skipped -= early;
    m_queued -= early;
}

void EncodedSound::addSilence(qint64 samples)
{
    const int piece = int(std::min<qint64>(samples, m_encoder->sample_rate));
    const FramePtr frame = soundFrame(*m_encoder, piece);
    if (!frame)
        return;
    av_samples_set_silence(
        frame->extended_data, 0, piece, m_encoder->ch_layout.nb_channels, m_encoder->sample_fmt);
    for (qint64 left = samples; left > 0; left -= piece)
        av_audio_fifo_write(m_fifo.get(),
                            reinterpret_cast<void **>(frame->extended_data),
                            int(std::min<qint64>(left, piece)));
    m_queued += samples;
}

bool EncodedSound::writeUntil(double seconds, QString *error)
{
    const int size = m_encoder->frame_size > 0 ? m_encoder->frame_size : DefaultFrameSize;
    while (m_encoded + size <= samplesIn(seconds)) {
        if (av_audio_fifo_size(m_fifo.get()) >= size) {
            if (!encode(size, error))
                return false;
        } else if (!decodeMore()) {
            return true;
        }
    }
    return true;
}

bool EncodedSound::finish(double seconds, QString *error)
{
    if (!writeUntil(seconds, error))
        return false;
    const qint64 wanted = samplesIn(seconds) - m_encoded;
    while (av_audio_fifo_size(m_fifo.get()) < wanted && decodeMore())
        continue;
    const int rest = int(std::min<qint64>(wanted, av_audio_fifo_size(m_fifo.get())));
    if (rest > 0 && !encode(rest, error))
        return false;
    avcodec_send_frame(m_encoder.get(), nullptr);
    return drain(error);
}

bool EncodedSound::encode(int samples, QString *error)
{
    const FramePtr frame = soundFrame(*m_encoder, samples);
    int code = frame ? 0 : AVERROR(ENOMEM);
    if (code >= 0) {
        av_audio_fifo_read(m_fifo.get(), reinterpret_cast<void **>(frame->extended_data), samples);
        frame->pts = m_encoded;
        m_encoded += samples;
        code = avcodec_send_frame(m_encoder.get(), frame.get());
    }
    if (code < 0) {
        *error = writeFailure(code);
        return false;
    }
    return drain(error);
}

bool EncodedSound::drain(QString *error)
{
    for (;;) {
        const int code = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
            return true;
        if (code < 0) {
            *error = writeFailure(code);
            return false;
        }
        if (!m_muxer.write(m_packet.get(), *m_stream, m_encoder->time_base, error))
            return false;
    }
}

} // namespace zk::media
