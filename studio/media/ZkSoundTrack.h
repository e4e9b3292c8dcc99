// Private to this folder.
#pragma once

#include "ZkMuxer.h"

namespace zk::media {

// The sound of an output file, taken from another file: as it is where the container can hold it,
// encoded anew otherwise. It is written along with the pictures, as far as they have come.
class SoundTrack
{
public:
    // From the settings' audio source. Null when that has no sound; then error is empty, unless something
    // went wrong.
    static std::unique_ptr<SoundTrack>
    create(Muxer &muxer, const OutputSettings &settings, QString *error);
    virtual ~SoundTrack() = default;

    virtual bool writeUntil(double seconds, QString *error) = 0;
    // Writes the rest up to the end of the pictures.
    virtual bool finish(double seconds, QString *error) = 0;
};

} // namespace zk::media
