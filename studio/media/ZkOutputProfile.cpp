#include "ZkOutputProfile.h"

#include <algorithm>

namespace zk::media {

namespace {

OutputProfile proRes()
{
    return {OutputFormat::ProRes4444Mov,
            "mov",
            true,
            "mov",
            "prores_ks",
            AV_PIX_FMT_YUVA444P10LE,
            {{"profile", "4444"}, {"alpha_bits", "16"}, {"vendor", "apl0"}},
            {},
            "pcm_s16le",
            {AV_CODEC_ID_PCM_S16LE, AV_CODEC_ID_PCM_S24LE, AV_CODEC_ID_AAC, AV_CODEC_ID_ALAC}};
}

// The encoder cannot look ahead with hidden frames when there is a second, transparent layer.
OutputProfile vp9()
{
    return {OutputFormat::Vp9Webm,
            "webm",
            true,
            "webm",
            "libvpx-vp9",
            AV_PIX_FMT_YUVA420P,
            {{"crf", "18"},
             {"b", "0"},
             {"deadline", "good"},
             {"cpu-used", "5"},
             {"row-mt", "1"},
             {"auto-alt-ref", "0"}},
            {},
            "libopus",
            {AV_CODEC_ID_OPUS, AV_CODEC_ID_VORBIS}};
}

// Sound that Matroska holds as it is.
QVector<AVCodecID> matroskaAudio()
{
    return {AV_CODEC_ID_PCM_S16LE,
            AV_CODEC_ID_PCM_S24LE,
            AV_CODEC_ID_FLAC,
            AV_CODEC_ID_AAC,
            AV_CODEC_ID_MP3,
            AV_CODEC_ID_AC3,
            AV_CODEC_ID_OPUS,
            AV_CODEC_ID_VORBIS};
}

OutputProfile ffv1()
{
    return {OutputFormat::Ffv1Mkv,
            "mkv",
            true,
            "matroska",
            "ffv1",
            AV_PIX_FMT_BGRA,
            {{"level", "3"}, {"slices", "4"}, {"slicecrc", "1"}, {"g", "1"}},
            {},
            "flac",
            matroskaAudio()};
}

OutputProfile sequence()
{
    return {OutputFormat::PngSequence,
            "png",
            true,
            nullptr,
            nullptr,
            AV_PIX_FMT_NONE,
            {},
            {},
            nullptr,
            {}};
}

OutputProfile h264()
{
    return {OutputFormat::H264Mp4,
            "mp4",
            false,
            "mp4",
            "libx264",
            AV_PIX_FMT_YUV420P,
            {{"preset", "fast"}, {"crf", "17"}, {"g", "25"}},
            {{"movflags", "+faststart"}},
            "aac",
            {AV_CODEC_ID_AAC, AV_CODEC_ID_MP3, AV_CODEC_ID_AC3}};
}

// Another generation of a file that was coded already, with key frames near each other for scrubbing.
OutputProfile h264ForEditing()
{
    return {OutputFormat::H264Mkv,
            "mkv",
            false,
            "matroska",
            "libx264",
            AV_PIX_FMT_YUV444P,
            {{"preset", "fast"}, {"crf", "10"}, {"g", "25"}},
            {},
            "flac",
            matroskaAudio()};
}

} // namespace

const QVector<OutputProfile> &outputProfiles()
{
    static const QVector<OutputProfile> profiles {
        proRes(), vp9(), ffv1(), sequence(), h264(), h264ForEditing()};
    return profiles;
}

const OutputProfile &profileOf(OutputFormat format)
{
    const QVector<OutputProfile> &profiles = outputProfiles();
    return *std::find_if(profiles.begin(), profiles.end(), [format](const OutputProfile &profile) {
        return profile.format == format;
    });
}

} // namespace zk::media
