// Ownership of libav objects, and its errors as text. Private to this folder.
#pragma once

#include <QString>

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace zk::media {

struct AvDeleter
{
    void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
    void operator()(SwrContext *context) const { swr_free(&context); }
    void operator()(AVAudioFifo *fifo) const { av_audio_fifo_free(fifo); }
};

using InputPtr = std::unique_ptr<AVFormatContext, AvDeleter>;
using CodecPtr = std::unique_ptr<AVCodecContext, AvDeleter>;
using FramePtr = std::unique_ptr<AVFrame, AvDeleter>;
using PacketPtr = std::unique_ptr<AVPacket, AvDeleter>;
using ScalerPtr = std::unique_ptr<SwsContext, AvDeleter>;
using ResamplerPtr = std::unique_ptr<SwrContext, AvDeleter>;
using AudioFifoPtr = std::unique_ptr<AVAudioFifo, AvDeleter>;

// Sends libav's log to the category zk.media as debug messages. Cheap after the first call.
void initialiseAv();

// libav's own words for an AVERROR, without a full stop.
QString avErrorText(int code);

// A name that libav takes for a plain local file whatever characters it holds.
QByteArray avFileName(const QString &path);

// Opens a local file and reads its stream headers. Null on failure, code then holds the AVERROR.
InputPtr openInput(const QString &path, int *code);

} // namespace zk::media
