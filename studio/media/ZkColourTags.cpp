#include "ZkColourTags.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace zk::media {

namespace {

// The limit below which an untagged picture is taken for standard definition.
constexpr int StandardDefinitionHeight = 576;

} // namespace

ColourTags ColourTags::ofFile(const QString &path)
{
    int code = 0;
    const InputPtr input = openInput(path, &code);
    const int stream =
        input ? av_find_best_stream(input.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0) : -1;
    if (stream < 0)
        return {};
    const AVCodecParameters &parameters = *input->streams[stream]->codecpar;
    const AVPixFmtDescriptor *format = av_pix_fmt_desc_get(AVPixelFormat(parameters.format));
    if (!format || (format->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) != 0)
        return {};
    ColourTags tags;
    tags.isHalved = format->log2_chroma_w > 0 && format->log2_chroma_h > 0;
    tags.primaries = parameters.color_primaries;
    tags.transfer = parameters.color_trc;
    tags.matrix = parameters.color_space;
    // Untagged pictures are taken for limited ones, but for those of formats that are full ones.
    if (parameters.color_range == AVCOL_RANGE_JPEG)
        tags.range = AVCOL_RANGE_JPEG;
    return tags;
}

int matrixFor(AVColorSpace tag, int height)
{
    if (tag != AVCOL_SPC_UNSPECIFIED && tag != AVCOL_SPC_RGB)
        return tag;
    return height > StandardDefinitionHeight ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

} // namespace zk::media
