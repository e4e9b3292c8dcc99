// Private to this folder.
#pragma once

#include "ZkMuxer.h"

#include <QImage>

namespace zk::media {

// Encodes images into the video stream of a container file.
class VideoEncoder
{
public:
    // Null, with a sentence for the user, when the encoder refuses the settings.
    static std::unique_ptr<VideoEncoder>
    create(Muxer &muxer, const OutputSettings &settings, QString *error);

    // The image is in Format_RGBA8888 and of the settings' size.
    bool encode(const QImage &image, QString *error);
    // Writes the pictures that the encoder still holds back.
    bool flush(QString *error);

private:
    explicit VideoEncoder(Muxer &muxer);
    bool open(const OutputSettings &settings, QString *error);
    void configure(const OutputSettings &settings, const OutputProfile &profile);
    bool preparePicture(const OutputSettings &settings);
    void convert(const QImage &image);
    bool drain(QString *error);

    Muxer &m_muxer;
    AVStream *m_stream;
    CodecPtr m_codec;
    ScalerPtr m_scaler;
    FramePtr m_picture;
    PacketPtr m_packet;
    int64_t m_nextFrame = 0;
};

} // namespace zk::media
