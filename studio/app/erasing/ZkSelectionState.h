// What is known about a selection to erase.
#pragma once

#include "segmentation/ZkSegments.h"

namespace zk::app {

// Whether a whole run has followed the objects through all frames as they are marked now. True for one
// frame, and when nothing is marked.
bool isFullyTracked(const datamodel::Segments &segments, qint64 frameCount);
// Whether every frame was reached, by whatever run.
bool reachesEveryFrame(const datamodel::Segments &segments, qint64 frameCount);
// Whether one was made of the other without changing anything.
bool isSameSelection(const datamodel::Segments &a, const datamodel::Segments &b);

} // namespace zk::app
