// Private to this folder.
#pragma once

#include "ZkKeptPictures.h"
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

    void keepPictures(qint64 maxBytes) override { m_kept.setMaxBytes(maxBytes); }

private:
    VideoReader(MediaInfo info, std::unique_ptr<VideoFile> file, const FrameClock &clock);
    QImage decode(qint64 frame) override;
    QImage imageOf(const AVFrame &picture);
    // Valid until the next call.
    const AVFrame *pictureAt(qint64 frame);
    bool reach(qint64 frame);
    qint64 firstWanted(qint64 frame) const;
    // Pictures of frames before the first one that is wanted may be left out on the way.
    bool goTo(qint64 frame, qint64 firstWanted);
    void skipBefore(qint64 frame);
    // Whether the next picture is the one that follows the current one in the file.
    bool isComplete() const;
    bool isCheaperToReadOn(qint64 frame) const;
    bool seekBefore(qint64 frame);
    bool restart();
    bool loadFirst();
    void advanceTo(qint64 frame);
    qint64 frameOf(const FramePtr &picture) const;

    std::unique_ptr<VideoFile> m_file;
    FrameClock m_clock;
    PictureConverter m_converter;
    KeptPictures m_kept;
    qint64 m_lastFrame = 0; // that was asked for
    int64_t m_skippedBefore = AV_NOPTS_VALUE; // pictures before it may be missing
    // The picture that is decoded, and the one after it, where it took that one to know how long.
    FramePtr m_current;
    FramePtr m_next;
    // The last image handed out and its picture, for frames that share it.
    QImage m_image;
    FramePtr m_imagePicture;
};

} // namespace zk::media
