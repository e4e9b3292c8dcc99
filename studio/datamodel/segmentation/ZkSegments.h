#pragma once

#include "ZkArea.h"

#include <QMap>

#include <memory>

namespace zk::datamodel {

class MatteCache;

// What the user did on one frame, and what came of it. Masks are of the frame's size.
struct SegmentNode
{
    // Strokes, 0 or 255; a pixel is in the map of the last stroke that touched it.
    EncodedMatte keep;
    EncodedMatte remove;
    EncodedMatte erase;
    EncodedMatte given; // a matte that was given instead of strokes
    Areas areas;
    EncodedMatte brush; // with areas: what strokes or the given matte made; without: no mask
    EncodedMatte result; // united with the objects in the areas
    quint64 revision = 0; // no two results have the same one

    const EncodedMatte &brushMask() const { return areas.isEmpty() ? result : brush; }
    // Whether there is anything but areas.
    bool isPainted() const
    {
        return !keep.isEmpty() || !remove.isEmpty() || !erase.isEmpty() || !given.isNull();
    }
};
using SegmentNodePtr = QSharedPointer<const SegmentNode>;

// What a tracking run in one direction made of one frame.
struct TrackedSide
{
    EncodedMatte matte; // null: no run came by
    float confidence = 0; // 0..1; 0: the object was lost
    qint64 seed = -1; // the last frame with a node that the run passed; -1: it passed none
    quint64 seedRevision = 0; // of that node
    quint64 serial = 0; // of the run; the higher one is the later one
};

// A frame between two nodes may have been reached from both of them.
struct TrackedMattes
{
    TrackedSide forward;
    TrackedSide backward;
};

// How far the mask that tracking made of a frame can be trusted.
struct TrackingTrust
{
    enum class Way { Forward, Backward, Both }; // of the runs that the mask comes from

    qint64 frame = 0;
    float confidence = 0; // as of confidenceAt()
    Way way = Way::Forward;
};

// Strokes, masks and tracking results of a clip, by frame. A value: copies share everything until one
// is changed, so that a copy is a snapshot, which any thread may hold and read.
//
// With several objects, nodes on different frames may mark different ones. So what is tracked does not
// give way to a node or to a run in the other direction: all of it is united, but for what was erased
// on the node's frame.
class ZKDATAMODEL_EXPORT Segments
{
public:
    Segments();

    const QMap<qint64, SegmentNodePtr> &nodes() const { return m_nodes; }
    const QMap<qint64, TrackedMattes> &tracked() const { return m_tracked; }
    // Selections that were saved and are no longer edited, the first one first.
    using Saved = QVector<std::shared_ptr<const Segments>>;
    const Saved &saved() const { return m_saved; }
    void setSaved(const Saved &saved) { m_saved = saved; }
    bool isEmpty() const { return m_nodes.isEmpty() && m_tracked.isEmpty() && m_saved.isEmpty(); }

    // Initially true.
    bool isSingleObject() const { return m_isSingleObject; }
    void setSingleObject(bool isSingle) { m_isSingleObject = isSingle; }

    SegmentNodePtr node(qint64 frame) const { return m_nodes.value(frame); }
    // Null takes the node away.
    void setNode(qint64 frame, const SegmentNodePtr &node);
    void setTracked(const QMap<qint64, TrackedMattes> &tracked) { m_tracked = tracked; }
    void setTracked(qint64 frame, bool isForward, const TrackedSide &side);
    // Forgets what runs in that direction made of the frames [first, last].
    void removeTracked(qint64 first, qint64 last, bool isForward);

    // Of one object, the mask of a frame is its node's result or else what tracking made of it. Where two
    // runs that came from the nodes around it met, both count, the nearer node's and the surer one more; a
    // run that began before one of these nodes was changed does not count beside one that did not.
    // Format_Grayscale8; null when the frame has none.
    QImage matteAt(qint64 frame) const;
    // An encoded mask as it is stored; null for a mask that is put together, and for none.
    EncodedMatte storedAt(qint64 frame) const;
    bool hasMask(qint64 frame) const;
    bool hasObject(qint64 frame) const; // any pixel of at least 128
    bool hasAnything(qint64 frame) const; // any pixel that is not 0
    // How sure tracking is of the frame's mask, 0 (the object was lost) to 1; 1 for a node; -1 when the
    // frame has no mask.
    float confidenceAt(qint64 frame) const;
    // Of the tracked frames without a node, ascending. Not of those that were tracked from a node that was
    // changed since: tracking again comes first there.
    QVector<TrackingTrust> trackingTrust() const;
    // The nearest frame whose mask has an object: at `frame`, or else before it (step -1) or after it
    // (step 1); -1: none.
    qint64 nearestObject(qint64 frame, int step) const;

    qint64 byteCount() const; // of all masks, compressed

    // Numbers for revisions and serials, higher every time. Those that come from a file are skipped.
    static quint64 nextRevision();
    static void skipRevisions(quint64 upTo);

private:
    struct Shown
    {
        EncodedMatte first;
        EncodedMatte second; // null unless two runs share the frame
        double weight = 1; // of the first
        float confidence = 1; // of the surer one
        TrackingTrust::Way way = TrackingTrust::Way::Forward;
        bool isStale = false; // a node on the way of the run was changed since
    };
    static Shown shownOf(const TrackedMattes &mattes, bool isForward);
    Shown shownAt(qint64 frame) const;
    Shown trackedShownAt(qint64 frame, const TrackedMattes &mattes) const;
    bool isFresh(qint64 seedFrame, const TrackedSide &side) const;

    // Of several objects.
    QVector<EncodedMatte> unitedParts(qint64 frame) const;
    EncodedMatte erasedAt(qint64 frame) const;
    QImage unitedAt(qint64 frame) const;
    bool anyPart(qint64 frame, bool (EncodedMatte::*hasIt)() const) const;

    QMap<qint64, SegmentNodePtr> m_nodes;
    QMap<qint64, TrackedMattes> m_tracked;
    Saved m_saved;
    bool m_isSingleObject = true;
    std::shared_ptr<MatteCache> m_cache; // shared by all copies
};

} // namespace zk::datamodel
