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

bool isTrackedFrom(const Segments &segments, qint64 node, qint64 frame, bool isForward)
{
    const TrackedMattes mattes = segments.tracked().value(frame);
    const TrackedSide &side = isForward ? mattes.forward : mattes.backward;
    return !side.matte.isNull() && side.seed == node
        && side.seedRevision == segments.node(node)->revision;
}

// The last frame that a leg from the seed to that end of the clip has to reach.
qint64 lastOf(const Segments &segments, qint64 seed, qint64 clipEnd)
{
    const bool isForward = clipEnd > seed;
    const int step = isForward ? 1 : -1;
    qint64 last = clipEnd;
    for (qint64 frame = clipEnd; frame != seed;) {
        qint64 node = frame;
        while (node != seed && !segments.node(node))
            node -= step;
        if (node == seed)
            break;
        for (; frame != node; frame -= step) {
            if (!isTrackedFrom(segments, node, frame, isForward))
                return last;
        }
        last = node;
        frame = node - step;
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
