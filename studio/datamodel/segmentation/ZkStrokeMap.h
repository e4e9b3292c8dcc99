#pragma once

#include "ZkGlobal.h"

#include <QImage>
#include <QRect>
#include <QSize>

namespace zk::datamodel {

// The painted pixels of a frame.
struct StrokeMap
{
    QImage pixels; // Format_Grayscale8 of the frame's size, 255 painted, 0 not
    QRect box; // that no painted pixel lies outside of; empty: none is painted
};

// Of a stroke image, which covers the whole frame at any resolution. A pixel of the stroke image is painted
// where its alpha is not 0 or, without an alpha channel, where it is not black. A pixel of the frame is
// painted when at least half of it is; when that leaves nothing of the strokes, when any of it is.
// Null pixels when an argument is empty.
ZKDATAMODEL_EXPORT StrokeMap strokeMap(const QImage &strokes, const QSize &frameSize);

} // namespace zk::datamodel
