#include "ZkCropGeometry_p.h"

namespace zk::widgets {

namespace {

constexpr int handleSide = 8;
constexpr int closeSide = 16;
constexpr int closeMargin = 8;
constexpr int reach = 6; // of an edge to either side

// Which edges an operation takes along: -1 left or top, 1 right or bottom.
QPoint edgesOf(CropOperation type)
{
    switch (type) {
    case CropOperation::ResizeTopLeft:
        return {-1, -1};
    case CropOperation::ResizeTop:
        return {0, -1};
    case CropOperation::ResizeTopRight:
        return {1, -1};
    case CropOperation::ResizeRight:
        return {1, 0};
    case CropOperation::ResizeBottomRight:
        return {1, 1};
    case CropOperation::ResizeBottom:
        return {0, 1};
    case CropOperation::ResizeBottomLeft:
        return {-1, 1};
    case CropOperation::ResizeLeft:
        return {-1, 0};
    default:
        return {0, 0};
    }
}

// -1 and 1 near the first and the last of a side's pixels, 0 between them, nothing beyond.
std::optional<int> edgeAt(int position, int first, int last)
{
    const int inside = qMin(reach, (last - first + 1) / 4); // leaves room to move it by
    if (position < first - reach || position > last + reach)
        return std::nullopt;
    if (position < first + inside)
        return -1;
    return position > last - inside ? 1 : 0;
}

QRect movedCrop(const QRect &rect, const QPoint &by, const QRect &canvas)
{
    QRect moved = rect.translated(by);
    moved.moveLeft(qMax(canvas.left(), qMin(moved.left(), canvas.right() - rect.width() + 1)));
    moved.moveTop(qMax(canvas.top(), qMin(moved.top(), canvas.bottom() - rect.height() + 1)));
    return moved;
}

int along(int middle, int first, int last, int edge)
{
    return edge < 0 ? first : edge > 0 ? last + 1 : middle;
}

} // namespace

QRect draggedCrop(const QRect &rect, CropOperation type, const QPoint &by, const QRect &canvas)
{
    if (type == CropOperation::MoveOperation)
        return movedCrop(rect, by, canvas);
    const QPoint edges = edgesOf(type);
    QRect result = rect;
    constexpr int least = smallestCrop - 1;
    if (edges.x() < 0)
        result.setLeft(qMin(rect.right() - least, qMax(canvas.left(), rect.left() + by.x())));
    else if (edges.x() > 0)
        result.setRight(qMax(rect.left() + least, qMin(canvas.right(), rect.right() + by.x())));
    if (edges.y() < 0)
        result.setTop(qMin(rect.bottom() - least, qMax(canvas.top(), rect.top() + by.y())));
    else if (edges.y() > 0)
        result.setBottom(qMax(rect.top() + least, qMin(canvas.bottom(), rect.bottom() + by.y())));
    return result;
}

QRect drawnCrop(const QPoint &from, const QPoint &to, const QRect &canvas)
{
    const QPoint topLeft(qMin(from.x(), to.x()), qMin(from.y(), to.y()));
    const QSize size(qAbs(from.x() - to.x()), qAbs(from.y() - to.y()));
    return QRect(topLeft, size) & canvas;
}

QRect cropHandle(const QRect &rect, CropOperation handle)
{
    const QPoint edges = edgesOf(handle);
    const QPoint centre(
        along(rect.left() + rect.width() / 2, rect.left(), rect.right(), edges.x()),
        along(rect.top() + rect.height() / 2, rect.top(), rect.bottom(), edges.y()));
    return {centre - QPoint(handleSide / 2, handleSide / 2), QSize(handleSide, handleSide)};
}

QRect cropCloseButton(const QRect &rect, const QRect &bounds)
{
    constexpr int needed = 3 * closeSide;
    QRect button(
        rect.right() + 1 - closeMargin - closeSide, rect.top() + closeMargin, closeSide, closeSide);
    if (rect.width() >= needed && rect.height() >= needed)
        return button;
    button.moveTopLeft(QPoint(rect.right() + 1 + closeMargin, rect.top()));
    if (button.right() > bounds.right())
        button.moveRight(rect.left() - closeMargin - 1);
    button.moveTop(qBound(bounds.top(), button.top(), bounds.bottom() - closeSide + 1));
    return button;
}

std::optional<CropOperation> cropOperationAt(const QRect &rect, const QPoint &point)
{
    const auto x = edgeAt(point.x(), rect.left(), rect.right());
    const auto y = edgeAt(point.y(), rect.top(), rect.bottom());
    if (!x || !y)
        return std::nullopt;
    const QPoint edges(*x, *y);
    for (int type = CropOperation::MoveOperation; type <= CropOperation::ResizeLeft; ++type) {
        if (edgesOf(CropOperation(type)) == edges)
            return CropOperation(type);
    }
    return std::nullopt;
}

Qt::CursorShape cropCursor(CropOperation type)
{
    const QPoint edges = edgesOf(type);
    if (edges.isNull())
        return Qt::SizeAllCursor;
    if (edges.x() == 0)
        return Qt::SizeVerCursor;
    if (edges.y() == 0)
        return Qt::SizeHorCursor;
    return edges.x() == edges.y() ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

QPoint carriedAlong(const QPoint &point, const QRect &from, const QRect &to)
{
    const double x = double(to.width()) / qMax(1, from.width());
    const double y = double(to.height()) / qMax(1, from.height());
    const QPoint offset = point - from.topLeft();
    return to.topLeft() + QPoint(qRound(offset.x() * x), qRound(offset.y() * y));
}

} // namespace zk::widgets
