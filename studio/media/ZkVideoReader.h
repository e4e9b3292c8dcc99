// Private to this folder.
#pragma once

#include "ZkMediaReader.h"
#include "ZkPictureConverter.h"
#include "ZkVideoFile.h"

namespace zk::media {

// Maps frames of the constant rate to the pictures of a video file. A picture is shown from the frame
// that starts closest to its time stamp until the next picture's.
class VideoReader : public MediaReader
{
public:
    static std::unique_ptr<MediaReader>
    open(const QString &path, const StillOptions &still, QString *error);

private:
    VideoReader(MediaInfo info, std::unique_ptr<VideoFile> file, const FrameClock &clock);
    QImage decode(qint64 frame) override;
    bool reach(qint64 frame);
    bool isCheaperToReadOn(qint64 frame) const;
    bool seekBefore(qint64 frame);
    bool restart();
    bool loadFirst();
    void advanceTo(qint64 frame);
    qint64 frameOf(const FramePtr &picture) const;

    std::unique_ptr<VideoFile> m_file;
    FrameClock m_clock;
    PictureConverter m_converter;
    // The picture that is shown, and the one after it, where it took that one to know how long.
    FramePtr m_current;
    FramePtr m_next;
    // The last image handed out, for frames that share a picture.
    QImage m_image;
};

} // namespace zk::media
