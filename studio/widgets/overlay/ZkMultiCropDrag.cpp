// What mouse and keys do to the rectangles.
#include "ZkMultiCropWidget_p.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

using namespace zk::widgets;

namespace {

constexpr int fastStep = 10; // widget pixels

QPoint directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

bool isPlain(const QKeyEvent *event)
{
    return !(event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier));
}

} // namespace

QRect ZkMultiCropWidget::Private::closeButton() const
{
    if (active < 0 || !canEdit())
        return {};
    return cropCloseButton(crops.at(active).rect, q->rect());
}

ZkMultiCropWidget::Private::Hit ZkMultiCropWidget::Private::hitAt(const QPoint &position) const
{
    if (active >= 0) {
        if (const auto type = cropOperationAt(crops.at(active).rect, position))
            return {active, *type};
    }
    for (int index = 0; index < crops.size(); ++index) {
        if (crops.at(index).rect.contains(position))
            return {index, MoveOperation};
    }
    return {};
}

void ZkMultiCropWidget::Private::hover(const QPoint &position)
{
    const bool isOverClose = closeButton().contains(position);
    const Hit hit = isBackgroundOnly ? Hit() : hitAt(position);
    if (hit.index != hovered || isOverClose != isCloseHovered) {
        hovered = hit.index;
        isCloseHovered = isOverClose;
        q->update();
    }
    if (!canEdit())
        return;
    const bool isOverCanvas = canvas.contains(position);
    const Qt::CursorShape shape = isOverClose ? Qt::ArrowCursor
        : hit.index >= 0                      ? cropCursor(hit.type)
        : isOverCanvas                        ? Qt::CrossCursor
                                              : Qt::ArrowCursor;
    if (q->cursor().shape() != shape)
        q->setCursor(shape);
}

// An editor in a window that takes no focus has the keys of the widget below it.
void ZkMultiCropWidget::Private::takeFocus()
{
    (keySource ? keySource.data() : q)->setFocus(Qt::MouseFocusReason);
}

void ZkMultiCropWidget::Private::press(const QPoint &position)
{
    takeFocus();
    if (drag.isOn) // the release of the drag before has got lost
        endDrag();
    isClosePressed = closeButton().contains(position);
    if (isClosePressed) {
        q->update();
        return;
    }
    const Hit hit = hitAt(position);
    if (hit.index < 0 && !canvas.contains(position)) {
        activate(-1);
        return;
    }
    beginDrag(hit.index, hit.type, position);
    if (hit.index >= 0)
        activate(hit.index);
}

void ZkMultiCropWidget::Private::beginDrag(int index, Operation type, const QPoint &position)
{
    drag = Drag();
    drag.isOn = true;
    drag.draws = index < 0;
    drag.type = type;
    drag.index = index;
    drag.press = drag.position = position;
    if (index >= 0) {
        drag.id = crops.at(index).id;
        drag.start = crops.at(index).rect;
    }
    qApp->installEventFilter(q); // for Esc: the focus may be elsewhere
}

void ZkMultiCropWidget::Private::continueDrag(const QPoint &position)
{
    if (position == drag.position)
        return;
    drag.position = position;
    q->update();
    if (drag.draws || drag.index < 0)
        return;
    const QPointer<ZkMultiCropWidget> alive(q);
    if (!drag.hasStarted) {
        drag.hasStarted = true;
        emit q->sigCropMoveStarted(drag.index, drag.type);
        if (!alive || !drag.isOn || drag.index < 0)
            return;
    }
    QRect &rect = crops[drag.index].rect;
    const QRect dragged = draggedCrop(drag.start, drag.type, drag.position - drag.press, canvas);
    if (std::exchange(rect, dragged) != dragged)
        emit q->sigCropMoving(drag.index, drag.type);
}

void ZkMultiCropWidget::Private::stopDrag()
{
    qApp->removeEventFilter(q);
    drag = Drag();
    isClosePressed = false;
    q->update();
}

void ZkMultiCropWidget::Private::endDrag()
{
    if (drag.draws) {
        finishDrawing();
        return;
    }
    const Drag done = drag;
    stopDrag();
    if (done.hasStarted && done.index >= 0)
        emit q->sigCropMoveFinished(done.index, done.type, crops.at(done.index).rect);
}

void ZkMultiCropWidget::Private::finishDrawing()
{
    const QRect rect = rubberBand();
    stopDrag();
    if (!isLargeEnough(rect)) {
        activate(-1);
        return;
    }
    crops.append({rect, -1});
    active = crops.size() - 1;
    emit q->sigCropCreated(active, rect);
}

void ZkMultiCropWidget::Private::cancelDrag()
{
    const Drag done = drag;
    stopDrag();
    if (!done.hasStarted || done.index < 0)
        return;
    crops[done.index].rect = done.start;
    emit q->sigCropMoveFinished(done.index, done.type, done.start);
}

void ZkMultiCropWidget::Private::activate(int index)
{
    if (index == active)
        return;
    active = index;
    q->update();
    emit q->sigCropActivated(index);
}

void ZkMultiCropWidget::Private::remove(int index)
{
    if (drag.isOn)
        stopDrag();
    crops.removeAt(index);
    if (active >= index)
        active = active == index ? -1 : active - 1;
    hovered = -1;
    isCloseHovered = false;
    q->update();
    emit q->sigCropRemoved(index);
}

void ZkMultiCropWidget::Private::replace(const QVector<Crop> &list, int activeIndex)
{
    crops = list;
    active = activeIndex;
    hovered = -1;
    isCloseHovered = false;
    if (drag.isOn && !drag.draws)
        carryDragAlong();
    q->update();
}

// A list that is emptied is usually filled again at once, so a drag outlives that.
void ZkMultiCropWidget::Private::carryDragAlong()
{
    drag.index = -1;
    for (int index = 0; index < crops.size() && drag.index < 0; ++index) {
        if (drag.id >= 0 && crops.at(index).id == drag.id)
            drag.index = index;
    }
    if (drag.index < 0) {
        if (!crops.isEmpty())
            stopDrag();
        return;
    }
    QRect &rect = crops[drag.index].rect;
    drag.press = carriedAlong(drag.press, drag.start, rect);
    drag.start = rect;
    if (drag.hasStarted)
        rect = draggedCrop(rect, drag.type, drag.position - drag.press, canvas);
}

bool ZkMultiCropWidget::Private::ownsKey(const QKeyEvent *event) const
{
    if (!canEdit() || !q->isVisible() || !isPlain(event))
        return false;
    const int key = event->key();
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        return !crops.isEmpty();
    if (key == Qt::Key_Escape)
        return drag.isOn;
    return active >= 0 && (key == Qt::Key_Delete || !directionOf(key).isNull());
}

bool ZkMultiCropWidget::Private::takeKey(const QKeyEvent *event)
{
    if (!ownsKey(event))
        return false;
    const bool isFast = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->key() == Qt::Key_Escape)
        cancelDrag();
    else if (drag.isOn)
        return true; // one thing at a time
    else if (event->key() == Qt::Key_Delete)
        remove(active);
    else if (!directionOf(event->key()).isNull())
        step(directionOf(event->key()) * (isFast ? fastStep : 1));
    else
        activateNext(event->key() == Qt::Key_PageDown ? 1 : -1);
    return true;
}

// A drag of its own, so that whoever listens sees no difference.
void ZkMultiCropWidget::Private::step(const QPoint &by)
{
    const QRect rect = crops.at(active).rect;
    if (draggedCrop(rect, MoveOperation, by, canvas) == rect)
        return;
    const QPointer<ZkMultiCropWidget> alive(q);
    beginDrag(active, MoveOperation, rect.topLeft());
    continueDrag(rect.topLeft() + by);
    if (alive && drag.isOn)
        endDrag();
}

void ZkMultiCropWidget::Private::activateNext(int direction)
{
    const int count = crops.size();
    const int from = active < 0 && direction < 0 ? 0 : active;
    activate((from + direction + count) % count);
}
