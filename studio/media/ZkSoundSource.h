// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

namespace zk::media {

// The packets of a file's sound, timed from a moment of it.
class SoundSource
{
public:
    // The moment is so many seconds after the first picture. Null when the file has no sound; then error is empty, unless the file cannot be opened at all.
    static std::unique_ptr<SoundSource> open(const QString &path, double start, QString *error);

    const AVStream &stream() const { return *m_input->streams[m_streamIndex]; }
    // False at the end.
    bool next(AVPacket *packet);
    // Seconds from that moment to the packet.
    double secondsOf(const AVPacket &packet) const;

private:
    SoundSource(InputPtr input, int streamIndex, double start);

    InputPtr m_input;
    int m_streamIndex;
    // The moment in the sound's time base.
    int64_t m_origin = 0;
};

} // namespace zk::media
