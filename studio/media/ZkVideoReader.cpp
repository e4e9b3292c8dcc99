#include "ZkVideoReader.h"

#include "ZkStillReader.h"
#include "ZkVideoProbe.h"

#include <algorithm>

namespace zk::media {

namespace {

// Where no index tells of key frames, skipping up to this many frames by decoding them beats a seek.
constexpr int ReadAhead = 24;
// Frames that could be decoded in the time in which a seek empties the decoder and fills it again.
constexpr int SeekCost = 3;

std::unique_ptr<MediaReader>
pictureOf(VideoFile &file, MediaInfo info, const StillOptions &still, QString *error)
{
    const FramePtr picture = file.nextPicture();
    PictureConverter converter(squarePixelSize(file), info.rotation);
    return StillReader::create(
        std::move(info), picture ? converter.convert(*picture) : QImage(), still, error);
}

} // namespace

VideoReader::VideoReader(MediaInfo info, std::unique_ptr<VideoFile> file, const FrameClock &clock)
    : MediaReader(std::move(info))
    , m_file(std::move(file))
    , m_clock(clock)
    , m_converter(squarePixelSize(*m_file), MediaReader::info().rotation)
{ }

std::unique_ptr<MediaReader>
VideoReader::open(const QString &path, const StillOptions &still, QString *error)
{
    std::unique_ptr<VideoFile> file = VideoFile::open(path, error);
    if (!file)
        return nullptr;
    MediaInfo info;
    FrameClock clock;
    info.path = path;
    if (!probeVideo(*file, &info, &clock, error))
        return nullptr;
    if (file->isPicture() && info.frameCount == 1)
        return pictureOf(*file, std::move(info), still, error);
    return std::unique_ptr<MediaReader>(new VideoReader(std::move(info), std::move(file), clock));
}

QImage VideoReader::decode(qint64 frame)
{
    if (!reach(frame))
        return {};
    if (m_image.isNull())
        m_image = m_converter.convert(*m_current);
    return m_image;
}

bool VideoReader::reach(qint64 frame)
{
    const bool canReadOn = m_current && frame >= frameOf(m_current);
    if (!canReadOn || !isCheaperToReadOn(frame)) {
        if (!(m_current || frame > 0 ? seekBefore(frame) : restart()))
            return false;
    }
    advanceTo(frame);
    return true;
}

bool VideoReader::isCheaperToReadOn(qint64 frame) const
{
    auto *stream = const_cast<AVStream *>(m_file->stream());
    const int entry =
        av_index_search_timestamp(stream, m_clock.stampOf(frame), AVSEEK_FLAG_BACKWARD);
    const AVIndexEntry *key = entry >= 0 ? avformat_index_get_entry(stream, entry) : nullptr;
    if (!key)
        return frame <= frameOf(m_current) + ReadAhead;
    return m_clock.frameOf(key->timestamp) <= frameOf(m_current) + SeekCost;
}

// Formats differ in where a seek ends up, and pictures without their references are dropped by the
// decoder: what counts is that the first picture that comes out is not after the wanted one.
bool VideoReader::seekBefore(qint64 frame)
{
    const auto second = qint64(std::max(1.0, info().frameRate()));
    for (qint64 back = 0; back < frame; back = back == 0 ? second : back * 4) {
        if (!m_file->seek(m_clock.stampOf(frame - back)))
            break;
        if (loadFirst() && frameOf(m_current) <= frame)
            return true;
    }
    return restart();
}

bool VideoReader::restart()
{
    if (m_file->rewind() && loadFirst() && frameOf(m_current) <= 0)
        return true;
    return m_file->reopen() && loadFirst();
}

bool VideoReader::loadFirst()
{
    m_image = QImage();
    m_next.reset();
    m_current = m_file->nextPicture();
    return m_current != nullptr;
}

void VideoReader::advanceTo(qint64 frame)
{
    while (frameOf(m_current) < frame) {
        if (!m_next)
            m_next = m_file->nextPicture();
        if (!m_next || frameOf(m_next) > frame)
            return;
        m_image = QImage();
        m_current = std::move(m_next);
    }
}

qint64 VideoReader::frameOf(const FramePtr &picture) const
{
    return m_clock.frameOf(VideoFile::stampOf(*picture));
}

} // namespace zk::media
