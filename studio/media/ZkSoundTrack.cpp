#include "ZkSoundTrack.h"

#include "ZkEncodedSound.h"
#include "ZkKeptSound.h"

namespace zk::media {

std::unique_ptr<SoundTrack> SoundTrack::create(Muxer &muxer,
                                               const OutputProfile &profile,
                                               const QString &sourcePath,
                                               QString *error)
{
    std::unique_ptr<SoundSource> source = SoundSource::open(sourcePath, error);
    if (!source)
        return nullptr;
    if (profile.keptAudio.contains(source->stream().codecpar->codec_id))
        return KeptSound::create(muxer, std::move(source), error);
    return EncodedSound::create(muxer, profile, std::move(source), error);
}

} // namespace zk::media
