#pragma once

#include "ZkSegments.h"

#include <QSize>

namespace zk::datamodel {

// The node that a frame has when an area is added, or replaced by one with the same id. Without a node
// before, the base is what its areas lie over; null: nothing. What was erased before is object again
// where the area's object is.
SegmentNodePtr nodeWithArea(const SegmentNodePtr &before,
                            const EncodedMatte &base,
                            const AreaPtr &area,
                            const QSize &frameSize);

// The node without that area; null when nothing is left of it.
SegmentNodePtr nodeWithoutArea(const SegmentNodePtr &before, qint64 id, const QSize &frameSize);

} // namespace zk::datamodel
