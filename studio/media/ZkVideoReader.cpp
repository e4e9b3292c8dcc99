#include "ZkVideoReader.h"

#include "ZkStillReader.h"
#include "ZkVideoProbe.h"

extern "C" {
#include <libavutil/imgutils.h>
}

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
    const AVFrame *picture = pictureAt(frame);
    m_lastFrame = frame;
    return picture ? imageOf(*picture) : QImage();
}

// The buffer of a picture that is held is not used for another one.
QImage VideoReader::imageOf(const AVFrame &picture)
{
    if (!m_imagePicture || m_imagePicture->data[0] != picture.data[0]) {
        m_image = m_converter.convert(picture);
        m_imagePicture.reset(av_frame_clone(&picture));
    }
    return m_image;
}

const AVFrame *VideoReader::pictureAt(qint64 frame)
{
    m_kept.moveTo(frame);
    if (const AVFrame *kept = m_kept.find(frame))
        return kept;
    if (!reach(frame))
        return nullptr;
    m_kept.keep(std::min(frame, frameOf(m_current)), frame, *m_current);
    return m_current.get();
}

// Where pictures are far apart in time, the one that is shown can be among those that were skipped.
bool VideoReader::reach(qint64 frame)
{
    const bool isReached = goTo(frame, firstWanted(frame));
    return isReached && isComplete() ? true : goTo(frame, 0) && isComplete();
}

// Who goes back a little goes on to do so, as far as pictures can be kept.
qint64 VideoReader::firstWanted(qint64 frame) const
{
    const AVCodecParameters &stream = *m_file->stream()->codecpar;
    const int bytes =
        av_image_get_buffer_size(AVPixelFormat(stream.format), stream.width, stream.height, 1);
    const bool isGoingBack = frame < m_lastFrame && m_lastFrame - frame <= ReadAhead;
    return isGoingBack && bytes > 0 ? frame - m_kept.maxBytes() / bytes : frame;
}

bool VideoReader::goTo(qint64 frame, qint64 firstWanted)
{
    const bool canReadOn =
        m_current && isComplete() && frame >= frameOf(m_current) && isCheaperToReadOn(frame);
    if (!canReadOn || firstWanted > frameOf(m_current) + SeekCost)
        skipBefore(firstWanted);
    if (!canReadOn && !(m_current || frame > 0 ? seekBefore(frame) : restart()))
        return false;
    advanceTo(frame);
    return true;
}

// One frame earlier, because containers round time stamps.
void VideoReader::skipBefore(qint64 frame)
{
    const bool canSkip = m_file->canSkip() && frame > 1;
    m_skippedBefore = canSkip ? m_clock.stampOf(frame - 1) : AV_NOPTS_VALUE;
    m_file->skipBefore(m_skippedBefore);
}

bool VideoReader::isComplete() const
{
    return m_skippedBefore == AV_NOPTS_VALUE
        || (m_file->canSkip() && VideoFile::stampOf(*m_current) >= m_skippedBefore);
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
        if (isComplete())
            m_kept.keep(frameOf(m_current), frameOf(m_next) - 1, *m_current);
        m_current = std::move(m_next);
    }
}

qint64 VideoReader::frameOf(const FramePtr &picture) const
{
    return m_clock.frameOf(VideoFile::stampOf(*picture));
}

} // namespace zk::media
