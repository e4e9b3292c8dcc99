#pragma once

#include "ZkMediaGlobal.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>

namespace zk::media {

enum class OutputFormat {
    ProRes4444Mov,
    Vp9Webm,
    Ffv1Mkv, // lossless
    PngSequence, // DIR/%05d.png, lossless, numbered from 0
    H264Mp4,
    // Not by a suffix: for files that are worked on further. Near lossless, any size, no alpha; sound of
    // most kinds is kept as it is.
    H264Mkv,
};

// By the suffix, upper or lower case: .mov, .webm, .mkv, .mp4, or a numbered .png pattern. False, with
// a sentence for the user that lists what can be written, for any other.
ZKMEDIA_EXPORT bool formatFor(const QString &path, OutputFormat *format, QString *error);

// Formats without alpha ignore that of the frames: composite them over a background first.
ZKMEDIA_EXPORT bool supportsAlpha(OutputFormat format);
ZKMEDIA_EXPORT bool supportsAudio(OutputFormat format);

// The size that a picture has in the file. H.264 (4:2:0) has even sizes only: an odd edge is doubled.
ZKMEDIA_EXPORT QSize encodedSize(OutputFormat format, const QSize &size);

// Deletes what a writer that was killed has left beside the target. Parts of writers that are alive
// stay.
ZKMEDIA_EXPORT void removeStaleParts(const QString &targetPath);

struct OutputSettings
{
    OutputFormat format = OutputFormat::ProRes4444Mov;
    QSize size;
    int frameRateNum = 25;
    int frameRateDen = 1;
    // The file whose sound goes with the pictures, no longer than these; empty, or a file without sound, for a silent output.
    QString audioSourcePath;
    // The frame of that file, at the settings' rate, that the first picture belongs to.
    qint64 audioSourceFrame = 0;
    // The file whose colour tags the output gets, where its pictures are YCbCr; empty: BT.709.
    QString colourSourcePath;
    // How many frames will be written, or 0 when that is not known: finish() refuses an output that has
    // another number of them.
    qint64 frameCount = 0;
};

// Writes a video or a numbered sequence. The output is complete or absent: everything goes to a hidden
// name beside the target, which takes the target's name (and place) in finish() and is gone after
// abort() or when the writer is destroyed without finish(). Not thread-safe.
class ZKMEDIA_EXPORT MediaWriter
{
public:
    // Null when the folder is missing or not writable, or the settings cannot be encoded; error then
    // holds one sentence for the user.
    static std::unique_ptr<MediaWriter>
    create(const QString &path, const OutputSettings &settings, QString *error);
    virtual ~MediaWriter();
    MediaWriter(const MediaWriter &) = delete;
    MediaWriter &operator=(const MediaWriter &) = delete;

    // The next frame, of the settings' size, in any format (straight-alpha Format_RGBA8888 is not
    // converted). After a failure nothing more can be written: what there was of the output is removed.
    bool write(const QImage &rgba, QString *error);

    // Completes the file and puts it in place. On failure the target is as it was before.
    bool finish(QString *error);
    void abort();

protected:
    explicit MediaWriter(OutputSettings settings);
    const OutputSettings &settings() const { return m_settings; }
    // While a frame is encoded it is already counted.
    qint64 framesWritten() const { return m_framesWritten; }

private:
    virtual bool encode(const QImage &rgba, QString *error) = 0;
    virtual bool complete(QString *error) = 0;
    virtual void discard() = 0;

    OutputSettings m_settings;
    qint64 m_framesWritten = 0;
    bool m_isOpen = true;
};

} // namespace zk::media
