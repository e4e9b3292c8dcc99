// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

namespace zk::media {

// The clock of a clip at a constant rate: frame n starts n / rate seconds after the first picture.
struct FrameClock
{
    AVRational timeBase {1, 1000};
    AVRational rate {25, 1};
    int64_t start = 0;

    // The frame that starts closest to the time stamp; containers round stamps to as much as 1 ms.
    qint64 frameOf(int64_t stamp) const;
    int64_t stampOf(qint64 frame) const;
};

// A video file with a decoder for its first real video stream: hands out its pictures in the order
// in which they are shown.
class VideoFile
{
public:
    // Null when it is no video file; error then holds one sentence for the user.
    static std::unique_ptr<VideoFile> open(const QString &path, QString *error);

    AVFormatContext *input() const { return m_input.get(); }
    const AVStream *stream() const { return m_input->streams[m_streamIndex]; }
    // A file of a single picture in a format that Qt cannot read.
    bool isPicture() const;
    bool hasOnlyKeyFrames() const;
    bool hasAlpha() const;

    // The file has no time stamps at all: the time stamp of a picture is its number, and the only way
    // back leads through the start.
    void setUntimed(bool isUntimed);

    // Pictures before the stamp need not come out where others do not depend on them, which makes the
    // way to the first one that is wanted shorter. AV_NOPTS_VALUE: all come out, as they do initially.
    void skipBefore(int64_t stamp) { m_skipBefore = stamp; }
    // False where the time stamps do not tell which pictures those are.
    bool canSkip() const { return m_canSkip && !m_isUntimed; }

    // The next packet of any stream; false at the end.
    bool nextPacket(AVPacket *packet);
    // Decodes the next picture; null at the end of the file. The picture is the caller's.
    FramePtr nextPicture();
    // Goes to a key frame at or, where the format is not sure of it, somewhere around the stamp. False
    // where the format cannot seek.
    bool seek(int64_t stamp);
    // Both go back to the very first packet; reopen() is slower, but sure.
    bool rewind();
    bool reopen();

    static int64_t stampOf(const AVFrame &picture);

private:
    explicit VideoFile(const QString &path);
    bool openStream(QString *error);
    bool openDecoder();
    const AVCodec *decoder() const;
    bool feed();
    AVDiscard discardOf(const AVPacket &packet);
    void flush();
    bool placeInTime(AVFrame *picture);

    QString m_path;
    InputPtr m_input;
    CodecPtr m_codec;
    PacketPtr m_packet;
    int m_streamIndex = -1;
    // Of the picture after the last one, when that is known.
    int64_t m_nextStamp = AV_NOPTS_VALUE;
    bool m_isDraining = false;
    bool m_isUntimed = false;
    int64_t m_skipBefore = AV_NOPTS_VALUE;
    bool m_canSkip = true;
};

} // namespace zk::media
