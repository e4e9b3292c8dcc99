#include "ZkSoundTrack.h"

#include "ZkEncodedSound.h"
#include "ZkKeptSound.h"

namespace zk::media {

std::unique_ptr<SoundTrack>
SoundTrack::create(Muxer &muxer, const OutputSettings &settings, QString *error)
{
    const OutputProfile &profile = profileOf(settings.format);
    const double start =
        double(settings.audioSourceFrame) * settings.frameRateDen / settings.frameRateNum;
    std::unique_ptr<SoundSource> source = SoundSource::open(settings.audioSourcePath, start, error);
    if (!source)
        return nullptr;
    if (profile.keptAudio.contains(source->stream().codecpar->codec_id))
        return KeptSound::create(muxer, std::move(source), error);
    return EncodedSound::create(muxer, profile, std::move(source), error);
}

} // namespace zk::media
