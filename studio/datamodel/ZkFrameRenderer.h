// From a timeline to pictures: what the player shows and what an export writes.
#pragma once

#include "ZkGlobal.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>

class ZkStudioTimeline;

namespace zk::media {
class FrameCache;
}

namespace zk::datamodel {

// Everything that the pictures of a timeline depend on, as it was when the snapshot was taken. Taken on
// the GUI thread; copies are cheap, share, and may be held and read by any thread while the timeline is
// being edited or deleted.
class ZKDATAMODEL_EXPORT RenderSnapshot
{
public:
    struct Data;

    // A null snapshot: no frames.
    RenderSnapshot();
    explicit RenderSnapshot(const ZkStudioTimeline &timeline);
    ~RenderSnapshot();
    RenderSnapshot(const RenderSnapshot &);
    RenderSnapshot &operator=(const RenderSnapshot &);

    bool isNull() const { return !m_data; }
    QString mediaPath() const;
    QSize frameSize() const; // pixels
    qint64 inFrame() const; // frame of the file that frame 0 shows
    qint64 frameCount() const;
    int frameRateNum() const;
    int frameRateDen() const;
    // Whether frames come out cut out at all: masks on an edit timeline, an applied and enabled cutout
    // on a timeline of the project.
    bool isCutOut() const;

    const Data *data() const { return m_data.get(); }

private:
    std::shared_ptr<const Data> m_data;
};

// Renders frames of snapshots. One per thread: not thread-safe, but any thread will do and any number
// may work side by side. It keeps one decoder open, that of the file it rendered last, so frames in
// order are the fast path. Pictures of frames that are outside the timeline or cannot be decoded are
// null; errorString() then says why.
//
// A frame of an edit timeline shows the masks in the service's preview type. A cutout effect (type 55)
// gives them its look while it is enabled; without one, or while it is disabled, they show as the plain
// cutout. A frame without a mask is transparent as soon as any other frame has one, because that is
// what apply would make of it; interactively it shows as it is. A clip without any mask shows as it is.
//
// A frame of a project timeline shows the cutout that was applied last, on black; without one, or while
// its effect is disabled, the frame as it is.
class ZKDATAMODEL_EXPORT FrameRenderer
{
public:
    // Decoded frames are kept in the cache (null: only the last one is kept), which other renderers
    // may share. keptBytes: what the decoder may keep of its own pictures, so that frames around the
    // last one come without decoding in any order.
    explicit FrameRenderer(std::shared_ptr<zk::media::FrameCache> cache = {}, qint64 keptBytes = 0);
    ~FrameRenderer();

    // The decoded frame: Format_RGBA8888, straight alpha.
    QImage source(const RenderSnapshot &snapshot, qint64 frame);
    // For painting: Format_ARGB32_Premultiplied, opaque. What does not change from one mask of a frame to
    // the next is kept, reduced as it was asked for last.
    struct Preview
    {
        QImage whole; // of the source's size
        QImage reduced; // of the given one; null when that is empty
    };
    Preview preview(const RenderSnapshot &snapshot, qint64 frame, const QSize &reduced);
    QImage preview(const RenderSnapshot &snapshot, qint64 frame)
    {
        return preview(snapshot, frame, QSize()).whole;
    }
    // For export: Format_RGBA8888, straight alpha. The frame as it is when nothing is cut out.
    QImage cutout(const RenderSnapshot &snapshot, qint64 frame);
    // Format_Grayscale8: the object's opacity with invert and the look's matte settings; all 255 when
    // nothing is cut out.
    QImage matte(const RenderSnapshot &snapshot, qint64 frame);

    QString errorString() const;

private:
    Q_DISABLE_COPY(FrameRenderer)
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::datamodel
