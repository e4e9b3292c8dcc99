#include "ZkMediaWriter.h"

#include "ZkOutputProfile.h"
#include "ZkSequenceWriter.h"
#include "ZkVideoWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace zk::media {

namespace {

QString unknownFormat(const QString &path)
{
    return QCoreApplication::translate(
               "zk::media",
               "%1 names no format that can be written; end it in .mov (ProRes 4444), .webm (VP9), "
               ".mkv (FFV1), .mp4 (H.264, no alpha), or %05d.png for a sequence of pictures.")
        .arg(QDir::toNativeSeparators(path));
}

QString wrongSize(const QSize &size)
{
    return QCoreApplication::translate("zk::media",
                                       "A picture of %1 x %2 pixels cannot be written to this "
                                       "output; check the size.")
        .arg(size.width())
        .arg(size.height());
}

bool isUsable(const OutputSettings &settings)
{
    return !settings.size.isEmpty() && settings.frameRateNum > 0 && settings.frameRateDen > 0;
}

void report(const QString &reason, QString *error)
{
    if (error)
        *error = reason;
}

} // namespace

bool formatFor(const QString &path, OutputFormat *format, QString *error)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const OutputProfile &profile : outputProfiles()) {
        SequencePattern pattern;
        if (suffix == QLatin1String(profile.suffix)
            && (profile.container || SequencePattern::parse(path, &pattern))) {
            *format = profile.format;
            return true;
        }
    }
    report(unknownFormat(path), error);
    return false;
}

bool supportsAlpha(OutputFormat format)
{
    return profileOf(format).hasAlpha;
}

bool supportsAudio(OutputFormat format)
{
    return profileOf(format).audioEncoder != nullptr;
}

QSize encodedSize(OutputFormat format, const QSize &size)
{
    if (format != OutputFormat::H264Mp4)
        return size;
    return {(size.width() + 1) / 2 * 2, (size.height() + 1) / 2 * 2};
}

void removeStaleParts(const QString &targetPath)
{
    PartFile::removeStale(targetPath);
    SequencePattern pattern;
    if (SequencePattern::parse(targetPath, &pattern))
        PartFile::removeStale(pattern.folder);
}

MediaWriter::MediaWriter(OutputSettings settings)
    : m_settings(std::move(settings))
{ }

MediaWriter::~MediaWriter() = default;

std::unique_ptr<MediaWriter>
MediaWriter::create(const QString &path, const OutputSettings &settings, QString *error)
{
    QString reason;
    std::unique_ptr<MediaWriter> writer;
    removeStaleParts(path);
    if (!isUsable(settings))
        reason = wrongSize(settings.size);
    else if (settings.format == OutputFormat::PngSequence)
        writer = SequenceWriter::create(path, settings, &reason);
    else
        writer = VideoWriter::create(path, settings, &reason);
    if (!writer)
        report(reason, error);
    return writer;
}

bool MediaWriter::write(const QImage &rgba, QString *error)
{
    if (!m_isOpen || rgba.size() != m_settings.size) {
        report(wrongSize(rgba.size()), error);
        abort();
        return false;
    }
    QString reason;
    ++m_framesWritten;
    if (encode(rgba.convertToFormat(QImage::Format_RGBA8888), &reason))
        return true;
    report(reason, error);
    abort();
    return false;
}

bool MediaWriter::finish(QString *error)
{
    QString reason;
    bool isComplete = false;
    if (!m_isOpen || m_framesWritten == 0
        || (m_settings.frameCount > 0 && m_framesWritten != m_settings.frameCount))
        reason = QCoreApplication::translate("zk::media",
                                             "The output is not complete: %1 of %2 frames were "
                                             "written; export it again.")
                     .arg(m_framesWritten)
                     .arg(m_settings.frameCount);
    else
        isComplete = complete(&reason);
    if (!isComplete)
        report(reason, error);
    abort();
    return isComplete;
}

void MediaWriter::abort()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    discard();
}

} // namespace zk::media
