#pragma once

#include "ZkGlobal.h"

#include <QImage>
#include <QSize>

namespace zk::datamodel {

// The painted pixels of a stroke image, which covers the whole frame at any resolution, as a map of
// the frame: Format_Grayscale8 of frameSize, 255 painted, 0 not. A pixel of the stroke image is painted
// where its alpha is not 0 or, without an alpha channel, where it is not black. A pixel of the frame is
// painted when at least half of it is; when that leaves nothing of the strokes, when any of it is.
// Null when an argument is empty.
ZKDATAMODEL_EXPORT QImage strokeMap(const QImage &strokes, const QSize &frameSize);

} // namespace zk::datamodel
