// Not public: where the parts of a rectangle are that the user edits, and what a drag makes of it.
// All numbers are widget pixels.
#pragma once

#include "widgets/ZkMultiCrop.h"

#include <optional>

namespace zk::widgets {

using CropOperation = ZkMultiCropWidget::OperationType;

constexpr int smallestCrop = 4;

inline bool isLargeEnough(const QRect &rect)
{
    return rect.width() >= smallestCrop && rect.height() >= smallestCrop;
}
// What a drag by that much makes of the rectangle. It stays within the canvas, and does not become
// smaller than the smallest nor turn over.
QRect draggedCrop(const QRect &rect, CropOperation type, const QPoint &by, const QRect &canvas);
// The rectangle between two points, within the canvas.
QRect drawnCrop(const QPoint &from, const QPoint &to, const QRect &canvas);
QRect cropHandle(const QRect &rect, CropOperation handle);
// Inside the rectangle where it is large enough, else beside it, within the bounds.
QRect cropCloseButton(const QRect &rect, const QRect &bounds);
// What a press there would do; its edges reach out a little, so that they can be met.
std::optional<CropOperation> cropOperationAt(const QRect &rect, const QPoint &point);
Qt::CursorShape cropCursor(CropOperation type);
// The point that lies in one rectangle as the given one does in the other.
QPoint carriedAlong(const QPoint &point, const QRect &from, const QRect &to);

} // namespace zk::widgets
