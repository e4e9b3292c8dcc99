#include "ZkSelectionState.h"

#include <algorithm>

namespace zk::app {

using datamodel::SegmentNodePtr;
using datamodel::Segments;
using datamodel::TrackedMattes;
using datamodel::TrackedSide;

namespace {

bool hasPassed(const TrackedSide &side, qint64 frame, const datamodel::SegmentNode &node)
{
    return side.seed == frame && side.seedRevision == node.revision;
}

// A run has come by since the node is as it is.
bool isPassed(const Segments &segments, qint64 frame, const SegmentNodePtr &node)
{
    if (node->result.isEmpty())
        return true; // nothing to follow
    const TrackedMattes mattes = segments.tracked().value(frame);
    return hasPassed(mattes.forward, frame, *node) || hasPassed(mattes.backward, frame, *node);
}

// What the result came from is still there.
bool isFresh(const Segments &segments, const TrackedSide &side)
{
    if (side.matte.isNull() || side.seed < 0)
        return true;
    const SegmentNodePtr node = segments.node(side.seed);
    return node && node->revision == side.seedRevision;
}

bool isSameSide(const TrackedSide &a, const TrackedSide &b)
{
    return a.serial == b.serial && a.seed == b.seed && a.seedRevision == b.seedRevision
        && a.matte.isNull() == b.matte.isNull();
}

bool isSameTracking(const TrackedMattes &a, const TrackedMattes &b)
{
    return isSameSide(a.forward, b.forward) && isSameSide(a.backward, b.backward);
}

} // namespace

bool reachesEveryFrame(const Segments &segments, qint64 frameCount)
{
    for (qint64 frame = 0; frame < frameCount; ++frame) {
        if (!segments.tracked().contains(frame) && !segments.node(frame))
            return false;
    }
    return true;
}

bool isFullyTracked(const Segments &segments, qint64 frameCount)
{
    const auto &nodes = segments.nodes();
    if (nodes.isEmpty() || frameCount < 2)
        return true;
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        if (!isPassed(segments, node.key(), node.value()))
            return false;
    }
    const auto &tracked = segments.tracked();
    const auto isTrackedAfresh = [&segments](const TrackedMattes &mattes) {
        return isFresh(segments, mattes.forward) && isFresh(segments, mattes.backward);
    };
    return std::all_of(tracked.begin(), tracked.end(), isTrackedAfresh)
        && reachesEveryFrame(segments, frameCount);
}

bool isSameSelection(const Segments &a, const Segments &b)
{
    const auto &before = a.tracked();
    const auto &after = b.tracked();
    return a.nodes() == b.nodes() && a.saved() == b.saved() && before.keys() == after.keys()
        && std::equal(before.begin(), before.end(), after.begin(), &isSameTracking);
}

} // namespace zk::app
