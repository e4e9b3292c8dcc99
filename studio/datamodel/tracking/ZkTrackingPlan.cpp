#include "ZkTrackingPlan.h"

#include <iterator>

namespace zk::datamodel {

namespace {

struct Seeds
{
    qint64 forward = -1;
    qint64 backward = -1;
};

qint64 nearestOnEitherSide(const Segments &segments, qint64 frame)
{
    const qint64 before = segments.nearestObject(frame, -1);
    const qint64 after = segments.nearestObject(frame, 1);
    if (before < 0 || after < 0)
        return qMax(before, after);
    return frame - before <= after - frame ? before : after;
}

Seeds seedsFrom(const Segments &segments,
                qint64 frame,
                ZKSMARTKEYING::ZkSegmentToTrackDirect direct)
{
    if (direct == ZKSMARTKEYING::TrackForward)
        return {segments.nearestObject(frame, -1), -1};
    if (direct == ZKSMARTKEYING::TrackBackward)
        return {-1, segments.nearestObject(frame, 1)};
    const qint64 seed = nearestOnEitherSide(segments, frame);
    return {seed, seed};
}

Seeds outermostSeeds(const Segments &segments, qint64 frameCount)
{
    Segments nodes = segments;
    nodes.setTracked({});
    const Segments &source = nodes.nearestObject(0, 1) >= 0 ? nodes : segments;
    return {source.nearestObject(0, 1), source.nearestObject(frameCount - 1, -1)};
}

// -1: none.
qint64 nextNode(const Segments &segments, qint64 frame, int step)
{
    const auto &nodes = segments.nodes();
    if (step > 0) {
        const auto after = nodes.upperBound(frame);
        return after == nodes.constEnd() ? -1 : after.key();
    }
    const auto from = nodes.lowerBound(frame);
    return from == nodes.constBegin() ? -1 : std::prev(from).key();
}

// Whether the frames between the node and the end, which does not count, were tracked from the node as it
// is now.
bool isSpanFresh(const Segments &segments, qint64 node, qint64 end, int step)
{
    const SegmentNodePtr seed = segments.node(node);
    for (qint64 frame = node + step; seed && frame != end; frame += step) {
        const TrackedMattes mattes = segments.tracked().value(frame);
        const TrackedSide &side = step > 0 ? mattes.forward : mattes.backward;
        if (side.matte.isNull() || side.seed != node || side.seedRevision != seed->revision)
            return false;
    }
    return seed != nullptr;
}

// The last frame that a leg from the seed to that end of the clip has to reach.
qint64 lastOf(const Segments &segments, qint64 seed, qint64 clipEnd)
{
    const int step = clipEnd > seed ? 1 : -1;
    qint64 last = clipEnd;
    for (qint64 node = seed; node >= 0;) {
        const qint64 next = nextNode(segments, node, step);
        const bool isFresh = isSpanFresh(segments, node, next < 0 ? clipEnd + step : next, step);
        if (isFresh && node == seed && next != seed + step)
            return clipEnd; // nothing has changed, and yet it is asked for again
        if (!isFresh)
            last = next < 0 ? clipEnd : next;
        node = next;
    }
    return last;
}

} // namespace

QVector<qint64> memoryOf(const Segments &segments, const TrackingLeg &leg)
{
    // On either side of the start. Each costs about as much time as tracking two frames.
    constexpr int most = 2;
    QVector<qint64> frames;
    // Nodes of several objects do not show all of them.
    if (!segments.isSingleObject())
        return frames;
    for (const int step : {leg.step(), -leg.step()}) {
        qint64 node = nextNode(segments, leg.seed, step);
        for (int i = 0; i < most && node >= 0; node = nextNode(segments, node, step)) {
            if (!segments.hasObject(node))
                continue;
            frames.prepend(node);
            ++i;
        }
    }
    return frames;
}

QVector<TrackingLeg> trackingPlan(const Segments &segments,
                                  qint64 frameCount,
                                  qint64 frame,
                                  ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                                  ZKSMARTKEYING::ZkSegmentToTrackType type)
{
    const Seeds seeds = type == ZKSMARTKEYING::TrackWholeClip ? outermostSeeds(segments, frameCount)
                                                              : seedsFrom(segments, frame, direct);
    const auto lastFrom = [&](qint64 seed, qint64 end) {
        return type == ZKSMARTKEYING::TrackWholeClip ? end : lastOf(segments, seed, end);
    };
    QVector<TrackingLeg> legs;
    if (seeds.forward >= 0 && seeds.forward < frameCount - 1)
        legs.append({seeds.forward, lastFrom(seeds.forward, frameCount - 1)});
    if (seeds.backward > 0)
        legs.append({seeds.backward, lastFrom(seeds.backward, 0)});
    return legs;
}

} // namespace zk::datamodel
