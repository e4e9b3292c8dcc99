#include "ZkEventDepth.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <utility>

namespace zk::app {

namespace {

constexpr int alarmInterval = 5; // ms

} // namespace

EventDepth::EventDepth()
{
    QCoreApplication::instance()->installEventFilter(this);
    // What is posted wakes the loop; that the timer fires does not.
    connect(
        &m_alarm, &QTimer::timeout, this, [] {}, Qt::QueuedConnection);
    // Outside of all loops nothing would hold the mark back in the first one that comes.
    if (thread()->loopLevel() > 0)
        mark();
}

// What is deleted later goes only when everything has returned that was running when this was said, whatever
// event loops it runs meanwhile. So one mark, of the outermost event, lasts as long as all that is inside.
void EventDepth::mark()
{
    m_isUnderWay = true;
    deleteLater();
}

void EventDepth::whenIdle(std::function<void()> function)
{
    m_function = std::move(function);
    m_alarm.start(alarmInterval);
}

// The mark is not taken at its word.
bool EventDepth::event(QEvent *event)
{
    if (event->type() != QEvent::DeferredDelete)
        return QObject::event(event);
    m_isUnderWay = false;
    m_alarm.stop();
    if (const auto function = std::exchange(m_function, nullptr))
        function();
    return true;
}

// The marks of others like this one are no work, or two would keep each other busy for ever.
bool EventDepth::eventFilter(QObject *watched, QEvent *event)
{
    const bool isMark =
        event->type() == QEvent::DeferredDelete && qobject_cast<EventDepth *>(watched);
    if (!m_isUnderWay && !isMark)
        mark();
    return false;
}

} // namespace zk::app
