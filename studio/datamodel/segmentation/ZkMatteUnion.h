#pragma once

#include "ZkEncodedMatte.h"

#include <QVector>

namespace zk::datamodel {

// In every pixel the largest value of all of them; those that are none, or of another size than the
// first, do not count. Null when all are none. Format_Grayscale8.
QImage unionOf(const QVector<EncodedMatte> &mattes);

// The union of the base and the parts again, after something has changed within that rectangle. The
// base gives the size of the frame when there is no `before`.
EncodedMatte reunited(const EncodedMatte &before,
                      const EncodedMatte &base,
                      const QVector<EncodedMatte> &parts,
                      const QSize &frameSize,
                      const QRect &changed);

} // namespace zk::datamodel
