// Private to this folder: a clip and its result as the eraser wants them.
#pragma once

#include "ZkEraseJob.h"
#include "ZkMaskFile.h"

#include "ZkMediaReader.h"
#include "erasing/ZkObjectEraser.h"

#include <memory>

namespace zk::erasing {

class ResultWriter;

// The frames of a job with their masks.
class FrameSource : public engine::EraseSource
{
public:
    // Null, with a sentence for the user, when the file does not have them all.
    static std::unique_ptr<FrameSource>
    open(const EraseJob &job, const QString &maskFile, QString *error);

    const media::MediaInfo &info() const { return m_reader->info(); }
    int frameCount() const override { return m_masks.count(); }
    bool read(int index, cv::Mat *picture, cv::Mat *mask) override;
    // Format_RGBA8888 of the file.
    QImage frame(int index);
    bool readMask(int index, cv::Mat *mask);
    QString errorString() const { return m_error; }

private:
    FrameSource() = default;

    QString m_path;
    qint64 m_inFrame = 0;
    std::unique_ptr<media::MediaReader> m_reader;
    MaskFile m_masks;
    QString m_error;
};

// Hands the finished frames on. The eraser knows no transparency: that of the source is put back, and
// where an object went, that of its surroundings.
class FrameSink : public engine::EraseSink
{
public:
    // transparency: the job's frames once more, read in step with the result; null: all is opaque.
    FrameSink(ResultWriter *writer, FrameSource *transparency);

    bool write(int index, const cv::Mat &picture) override;
    QString errorString() const { return m_error; }

private:
    bool addTransparency(int index, cv::Mat *rgba);

    ResultWriter *const m_writer;
    FrameSource *const m_transparency;
    QString m_error;
};

} // namespace zk::erasing
