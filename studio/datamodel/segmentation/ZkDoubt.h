#pragma once

#include "ZkSegments.h"

namespace zk::datamodel {

// The tracked frame that is most worth a correction; -1: tracking is sure of all of them.
//
// An error is carried on along the way of a run, and so is a correction: of the stretch that is most in
// doubt it is the frame at which confidence has clearly fallen, and between two runs that met, which are
// both far from their nodes, the worst frame. It is no node, and not beside one.
//
// checked: frames that were found to be right, with the confidence that tracking had there. What is in doubt
// together with one is left out, unless it was tracked again with another confidence.
ZKDATAMODEL_EXPORT qint64 frameToCorrect(const Segments &segments,
                                         const QMap<qint64, float> &checked = {});

} // namespace zk::datamodel
