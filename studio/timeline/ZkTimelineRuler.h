#pragma once

#include "ZkGlobal.h"

#include <QString>

namespace zk::timeline {

// Distances between the marks of a ruler, in frames. The major ones carry a time code.
struct RulerSteps
{
    qint64 major = 1;
    qint64 minor = 1; // divides the major one
};

// The closest marks whose time codes, of that width in pixels, do not touch. They fall on whole seconds
// or on even parts of one.
ZKTIMELINEVIEW_EXPORT RulerSteps rulerSteps(double frameRate,
                                            double pixelsPerFrame,
                                            double labelWidth);

// hh:mm:ss:ff. A rate such as 29.97 counts 30 frames to the second and drops none.
ZKTIMELINEVIEW_EXPORT QString timeCode(qint64 frame, double frameRate);

} // namespace zk::timeline
