// Input events that QTest cannot send.
#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include <qtestspontaneevent.h>

namespace zk::test {

// Turns the wheel above a point of the widget by that angle, 120 being a notch.
inline void
turnWheel(QWidget *widget, const QPointF &at, int angle, Qt::KeyboardModifiers modifiers = {})
{
    const QPointF global = widget->mapToGlobal(at.toPoint());
    QWheelEvent event(at, global, {}, {0, angle}, {}, modifiers, Qt::NoScrollPhase, false);
    // Only what the window system sends goes on to the parents of who ignores it.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

// Moves the mouse to a point of the widget; QTest::mouseMove() tells no buttons.
inline void drag(QWidget *widget, const QPoint &to, Qt::MouseButtons held = Qt::LeftButton)
{
    QMouseEvent event(QEvent::MouseMove, to, widget->mapToGlobal(to), {}, held, {});
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace zk::test
