// Private to this folder.
#pragma once

#include "ZkSoundSource.h"
#include "ZkSoundTrack.h"

namespace zk::media {

// Sound that is passed on packet by packet.
class KeptSound : public SoundTrack
{
public:
    static std::unique_ptr<SoundTrack>
    create(Muxer &muxer, std::unique_ptr<SoundSource> source, QString *error);

    bool writeUntil(double seconds, QString *error) override;
    bool finish(double seconds, QString *error) override;

private:
    KeptSound(Muxer &muxer, std::unique_ptr<SoundSource> source);
    void fetch();

    Muxer &m_muxer;
    std::unique_ptr<SoundSource> m_source;
    AVStream *m_stream;
    // The next packet to write, while there is one.
    PacketPtr m_packet;
    bool m_hasPacket = false;
};

} // namespace zk::media
