#pragma once

#include "../segmentation/ZkSegments.h"

#include "datamodel/ZkSmartKeyingTypes.h"

#include <QVector>

namespace zk::datamodel {

// A stretch that is tracked in one go: from the mask of the frame `seed`, frame by frame, to `last`.
struct TrackingLeg
{
    qint64 seed = 0;
    qint64 last = 0;

    bool isForward() const { return last > seed; }
    int step() const { return isForward() ? 1 : -1; }
    qint64 length() const { return qAbs(last - seed); } // frames to track

    friend bool operator==(const TrackingLeg &a, const TrackingLeg &b)
    {
        return a.seed == b.seed && a.last == b.last;
    }
};

// What a run has to do; empty when there is no object to start from or no frame left.
//
// To the clip's end: it starts from the mask at the frame or, if that has no object, from the nearest
// one that has, looking against the direction of the run; both ways it starts from the nearest one on
// either side. It ends at a node from which on everything has been tracked in that direction with the
// nodes as they are now: a correction spreads up to the next node. Where nothing was corrected it goes
// all the way once more.
// Whole clip: forward from the first node with an object and backward from the last one, so that every
// frame between two nodes is reached from both. Without such a node the tracked frames count.
ZKDATAMODEL_EXPORT QVector<TrackingLeg> trackingPlan(const Segments &segments,
                                                     qint64 frameCount,
                                                     qint64 frame,
                                                     ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                                                     ZKSMARTKEYING::ZkSegmentToTrackType type);

// Frames of nodes around the start of the leg that a run had better learn from before it starts: first
// those behind it, then those on its way, the nearest ones last.
ZKDATAMODEL_EXPORT QVector<qint64> memoryOf(const Segments &segments, const TrackingLeg &leg);

} // namespace zk::datamodel
