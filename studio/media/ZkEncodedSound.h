// Private to this folder.
#pragma once

#include "ZkSoundSource.h"
#include "ZkSoundTrack.h"

namespace zk::media {

// Sound that is decoded and encoded anew. Gaps in the source become silence, so that it stays in step
// with the pictures.
class EncodedSound : public SoundTrack
{
public:
    static std::unique_ptr<SoundTrack> create(Muxer &muxer,
                                              const OutputProfile &profile,
                                              std::unique_ptr<SoundSource> source,
                                              QString *error);

    bool writeUntil(double seconds, QString *error) override;
    bool finish(double seconds, QString *error) override;

private:
    EncodedSound(Muxer &muxer, std::unique_ptr<SoundSource> source);
    int openDecoder();
    int openEncoder(const char *name);
    int openResampler();
    bool decodeMore();
    void take(const AVFrame &sound);
    void resample(const AVFrame *sound);
    void addSilence(qint64 samples);
    bool encode(int samples, QString *error);
    bool drain(QString *error);
    qint64 samplesIn(double seconds) const;

    Muxer &m_muxer;
    std::unique_ptr<SoundSource> m_source;
    AVStream *m_stream;
    CodecPtr m_decoder;
    CodecPtr m_encoder;
    ResamplerPtr m_resampler;
    AudioFifoPtr m_fifo;
    PacketPtr m_packet;
    FramePtr m_sound;
    // All in samples at the encoder's rate: put into the queue, still to be dropped because they come
    // before the first picture, and encoded.
    qint64 m_queued = 0;
    qint64 m_skipped = 0;
    qint64 m_encoded = 0;
    // Whether the first sound has been put in its place.
    bool m_isPlaced = false;
    bool m_isAtEnd = false;
};

} // namespace zk::media
