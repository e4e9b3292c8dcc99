// Private to the data model: the outlines of the objects in areas.
#pragma once

#include "ZkSegments.h"

#include <QColor>

namespace zk::datamodel {

// Draws them on a picture of the frame (32 bits a pixel), two pixels wide at 1080. Null: no node.
void drawAreaOutlines(QImage *picture, const SegmentNodePtr &node, const QColor &colour);

} // namespace zk::datamodel
