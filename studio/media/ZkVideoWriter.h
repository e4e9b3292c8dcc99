// Private to this folder.
#pragma once

#include "ZkMediaWriter.h"
#include "ZkPartFile.h"
#include "ZkSoundTrack.h"
#include "ZkVideoEncoder.h"

namespace zk::media {

// Writes a video file with the sound of its source.
class VideoWriter : public MediaWriter
{
public:
    static std::unique_ptr<MediaWriter>
    create(const QString &path, const OutputSettings &settings, QString *error);

private:
    explicit VideoWriter(const OutputSettings &settings);
    bool open(const QString &path, QString *error);
    bool openSound(QString *error);
    bool encode(const QImage &image, QString *error) override;
    bool complete(QString *error) override;
    void discard() override;
    double seconds() const;

    std::unique_ptr<PartFile> m_part;
    std::unique_ptr<Muxer> m_muxer;
    std::unique_ptr<VideoEncoder> m_pictures;
    std::unique_ptr<SoundTrack> m_sound;
};

} // namespace zk::media
