// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

#include <map>

namespace zk::media {

// Decoded pictures around the frame that was read last, by the frames that show them. They are kept as
// they were decoded, which takes less than half of what an image takes.
class KeptPictures
{
public:
    qint64 maxBytes() const { return m_maxBytes; }
    // 0 keeps nothing.
    void setMaxBytes(qint64 bytes);

    // Pictures far from the frame go first, those that it moves away from before those ahead of it.
    void moveTo(qint64 frame);
    // The picture is shown from the first frame to the last one. Its pixels are shared, not copied.
    void keep(qint64 first, qint64 last, const AVFrame &picture);
    // Null when it is not there; valid until something is kept.
    const AVFrame *find(qint64 frame) const;

private:
    struct Kept
    {
        qint64 last;
        qint64 bytes;
        FramePtr picture;
    };
    using Pictures = std::map<qint64, Kept>; // by the first frame

    void limit();
    void drop(Pictures::iterator kept);

    Pictures m_pictures;
    qint64 m_maxBytes = 0;
    qint64 m_bytes = 0;
    qint64 m_frame = 0;
    bool m_goesBackwards = false;
};

} // namespace zk::media
