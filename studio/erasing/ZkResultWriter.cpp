#include "ZkResultWriter.h"

#include "ZkEraseTexts.h"

#include <QImageWriter>
#include <QSaveFile>

namespace zk::erasing {

namespace {

constexpr int jpegQuality = 95;

media::OutputSettings
settingsFor(const EraseJob &job, const media::MediaInfo &source, qint64 frameCount)
{
    media::OutputSettings settings;
    settings.format = job.output.format;
    settings.size = source.size;
    settings.frameRateNum = source.frameRateNum;
    settings.frameRateDen = source.frameRateDen;
    settings.frameCount = frameCount;
    settings.colourSourcePath = job.mediaPath;
    if (source.hasAudio) {
        settings.audioSourcePath = job.mediaPath;
        settings.audioSourceFrame = job.inFrame;
    }
    return settings;
}

} // namespace

std::unique_ptr<ResultWriter> ResultWriter::create(const EraseJob &job,
                                                   const media::MediaInfo &source,
                                                   qint64 frameCount,
                                                   const QString &path,
                                                   QString *error)
{
    std::unique_ptr<ResultWriter> result(new ResultWriter(job, path));
    if (job.output.isPicture)
        return result;
    result->m_writer =
        media::MediaWriter::create(path, settingsFor(job, source, frameCount), error);
    return result->m_writer ? std::move(result) : nullptr;
}

bool ResultWriter::write(const QImage &rgba, QString *error)
{
    if (m_writer)
        return m_writer->write(rgba, error);
    m_picture = rgba;
    return true;
}

bool ResultWriter::finish(QString *error)
{
    return m_writer ? m_writer->finish(error) : savePicture(error);
}

bool ResultWriter::savePicture(QString *error) const
{
    QSaveFile file(m_path);
    QImageWriter writer(&file, QByteArray());
    writer.setFormat(m_path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) ? "png" : "jpg");
    if (writer.format() == "jpg")
        writer.setQuality(jpegQuality);
    if (file.open(QIODevice::WriteOnly) && writer.write(m_picture) && file.commit())
        return true;
    *error = EraseTexts::cannotWriteBeside(m_target);
    return false;
}

} // namespace zk::erasing
