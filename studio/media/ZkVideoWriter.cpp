#include "ZkVideoWriter.h"

namespace zk::media {

VideoWriter::VideoWriter(const OutputSettings &settings)
    : MediaWriter(settings)
{ }

std::unique_ptr<MediaWriter>
VideoWriter::create(const QString &path, const OutputSettings &settings, QString *error)
{
    std::unique_ptr<VideoWriter> writer(new VideoWriter(settings));
    if (writer->open(path, error))
        return writer;
    writer->discard();
    return nullptr;
}

bool VideoWriter::open(const QString &path, QString *error)
{
    m_part = PartFile::createFile(path, error);
    if (!m_part)
        return false;
    m_muxer = Muxer::create(profileOf(settings().format), m_part->path(), error);
    if (!m_muxer)
        return false;
    m_pictures = VideoEncoder::create(*m_muxer, settings(), error);
    return m_pictures && openSound(error) && m_muxer->begin(error);
}

bool VideoWriter::openSound(QString *error)
{
    if (settings().audioSourcePath.isEmpty())
        return true;
    QString reason;
    m_sound = SoundTrack::create(*m_muxer, settings(), &reason);
    if (!reason.isEmpty())
        *error = reason;
    return reason.isEmpty();
}

double VideoWriter::seconds() const
{
    return double(framesWritten()) * settings().frameRateDen / settings().frameRateNum;
}

bool VideoWriter::encode(const QImage &image, QString *error)
{
    return m_pictures->encode(image, error) && (!m_sound || m_sound->writeUntil(seconds(), error));
}

bool VideoWriter::complete(QString *error)
{
    if (!m_pictures->flush(error) || (m_sound && !m_sound->finish(seconds(), error))
        || !m_muxer->end(error))
        return false;
    return m_part->commit(error);
}

void VideoWriter::discard()
{
    // The file is closed before it is removed.
    m_sound.reset();
    m_pictures.reset();
    m_muxer.reset();
    m_part.reset();
}

} // namespace zk::media
