// Private to this folder.
#pragma once

#include "ZkAvHandles.h"
#include "ZkMediaWriter.h"

#include <QVector>

namespace zk::media {

struct EncoderOption
{
    const char *name;
    const char *value;
};

// How one output format is encoded.
struct OutputProfile
{
    OutputFormat format;
    const char *suffix;
    bool hasAlpha;
    // libav's names; null for a picture sequence, which Qt writes.
    const char *container;
    const char *videoEncoder;
    AVPixelFormat pixelFormat;
    QVector<EncoderOption> videoOptions;
    QVector<EncoderOption> containerOptions;
    const char *audioEncoder;
    // Sound in one of these is kept as it is.
    QVector<AVCodecID> keptAudio;
};

const OutputProfile &profileOf(OutputFormat format);
const QVector<OutputProfile> &outputProfiles();

} // namespace zk::media
