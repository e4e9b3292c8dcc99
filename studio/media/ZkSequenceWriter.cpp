#include "ZkSequenceWriter.h"

#include "ZkMuxer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QRegularExpression>

#include <cerrno>

namespace zk::media {

namespace {

// zlib levels: this one is three times as fast as the default and a tenth larger.
constexpr int PngCompression = 80; // of Qt's 0-100, most to least compressed

QString pictureFailure(const QFile &file)
{
    if (file.error() == QFileDevice::ResourceError)
        return writeFailure(AVERROR(ENOSPC));
    return QCoreApplication::translate(
               "zk::media",
               "A picture of the sequence could not be written (%1); choose "
               "another folder.")
        .arg(file.errorString());
}

void removeFirst(const SequencePattern &pattern, qint64 count)
{
    const QDir folder(pattern.folder);
    for (qint64 i = 0; i < count; ++i)
        QFile::remove(folder.filePath(pattern.fileName(i)));
}

// A shorter sequence that replaces a longer one must not end with the old one's pictures.
void removeLongerTail(const SequencePattern &pattern, qint64 count)
{
    const QDir folder(pattern.folder);
    for (qint64 i = count; QFile::remove(folder.filePath(pattern.fileName(i))); ++i)
        continue;
}

} // namespace

bool placeSequence(const QString &from,
                   const SequencePattern &to,
                   qint64 frameCount,
                   QString *error)
{
    // The folder may have come to be since the writing began.
    if (!QFileInfo(to.folder).isDir())
        return moveIntoPlace(from, to.folder, error);
    for (qint64 i = 0; i < frameCount; ++i) {
        const QString name = to.fileName(i);
        if (!moveIntoPlace(QDir(from).filePath(name), QDir(to.folder).filePath(name), error)) {
            removeFirst(to, i);
            return false;
        }
    }
    removeLongerTail(to, frameCount);
    return true;
}

bool SequencePattern::parse(const QString &path, SequencePattern *pattern)
{
    static const QRegularExpression numbered(QStringLiteral("^([^%]*)%0?(\\d*)d([^%]*)$"));
    const QFileInfo info(path);
    const QRegularExpressionMatch match = numbered.match(info.fileName());
    if (!match.hasMatch())
        return false;
    pattern->folder = info.absolutePath();
    pattern->prefix = match.captured(1);
    pattern->digits = match.captured(2).toInt();
    pattern->suffix = match.captured(3);
    return true;
}

QString SequencePattern::fileName(qint64 number) const
{
    return prefix + QStringLiteral("%1").arg(number, digits, 10, QLatin1Char('0')) + suffix;
}

SequenceWriter::SequenceWriter(const OutputSettings &settings, SequencePattern pattern)
    : MediaWriter(settings)
    , m_pattern(std::move(pattern))
{ }

std::unique_ptr<MediaWriter>
SequenceWriter::create(const QString &path, const OutputSettings &settings, QString *error)
{
    SequencePattern pattern;
    OutputFormat format {};
    if (!SequencePattern::parse(path, &pattern)) {
        // Says how a sequence is named.
        formatFor(path, &format, error);
        return nullptr;
    }
    std::unique_ptr<SequenceWriter> writer(new SequenceWriter(settings, pattern));
    const bool isIntoFolder = QFileInfo(pattern.folder).isDir();
    writer->m_part = PartFile::createFolder(isIntoFolder ? path : pattern.folder, error);
    return writer->m_part ? std::move(writer) : nullptr;
}

bool SequenceWriter::encode(const QImage &image, QString *error)
{
    QFile file(QDir(m_part->path()).filePath(m_pattern.fileName(framesWritten() - 1)));
    if (file.open(QIODevice::WriteOnly)) {
        QImageWriter writer(&file, "png");
        writer.setQuality(PngCompression);
        // The last piece reaches the disk only now, and may be the one that does not fit.
        if (writer.write(image) && file.flush())
            return true;
    }
    *error = pictureFailure(file);
    return false;
}

bool SequenceWriter::complete(QString *error)
{
    return placeSequence(m_part->path(), m_pattern, framesWritten(), error);
}

void SequenceWriter::discard()
{
    m_part.reset();
}

} // namespace zk::media
