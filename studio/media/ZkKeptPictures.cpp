#include "ZkKeptPictures.h"

#include <algorithm>

namespace zk::media {

namespace {

// What lies behind is worth as much as what lies that many times as far ahead.
constexpr qint64 BehindFactor = 4;

qint64 bytesOf(const AVFrame &picture)
{
    qint64 bytes = 0;
    for (const AVBufferRef *buffer : picture.buf)
        bytes += buffer ? qint64(buffer->size) : 0;
    return bytes;
}

} // namespace

void KeptPictures::setMaxBytes(qint64 bytes)
{
    m_maxBytes = bytes;
    limit();
}

void KeptPictures::moveTo(qint64 frame)
{
    if (frame != m_frame)
        m_goesBackwards = frame < m_frame;
    m_frame = frame;
}

void KeptPictures::keep(qint64 first, qint64 last, const AVFrame &picture)
{
    if (m_maxBytes <= 0 || last < first)
        return;
    const auto held = m_pictures.find(first);
    if (held != m_pictures.end()) {
        if (held->second.picture->data[0] == picture.data[0]) {
            held->second.last = std::max(held->second.last, last);
            return;
        }
        drop(held);
    }
    FramePtr reference(av_frame_clone(&picture));
    if (!reference)
        return;
    const qint64 bytes = bytesOf(picture);
    m_pictures.emplace(first, Kept {last, bytes, std::move(reference)});
    m_bytes += bytes;
    limit();
}

const AVFrame *KeptPictures::find(qint64 frame) const
{
    const auto next = m_pictures.upper_bound(frame);
    if (next == m_pictures.begin())
        return nullptr;
    const Kept &kept = std::prev(next)->second;
    return frame <= kept.last ? kept.picture.get() : nullptr;
}

void KeptPictures::limit()
{
    while (m_bytes > m_maxBytes && !m_pictures.empty()) {
        const auto lowest = m_pictures.begin();
        const auto highest = std::prev(m_pictures.end());
        const qint64 below = (m_frame - lowest->first) * (m_goesBackwards ? 1 : BehindFactor);
        const qint64 above = (highest->first - m_frame) * (m_goesBackwards ? BehindFactor : 1);
        drop(below > above ? lowest : highest);
    }
}

void KeptPictures::drop(Pictures::iterator kept)
{
    m_bytes -= kept->second.bytes;
    m_pictures.erase(kept);
}

} // namespace zk::media
