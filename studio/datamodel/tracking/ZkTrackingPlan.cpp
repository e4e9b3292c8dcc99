#include "ZkTrackingPlan.h"

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

} // namespace

QVector<TrackingLeg> trackingPlan(const Segments &segments,
                                  qint64 frameCount,
                                  qint64 frame,
                                  ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                                  ZKSMARTKEYING::ZkSegmentToTrackType type)
{
    const Seeds seeds = type == ZKSMARTKEYING::TrackWholeClip ? outermostSeeds(segments, frameCount)
                                                              : seedsFrom(segments, frame, direct);
    QVector<TrackingLeg> legs;
    if (seeds.forward >= 0 && seeds.forward < frameCount - 1)
        legs.append({seeds.forward, frameCount - 1});
    if (seeds.backward > 0)
        legs.append({seeds.backward, 0});
    return legs;
}

} // namespace zk::datamodel
