#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace zk::app {

// Knows whether an event that began while it lives, or in which it was made, is still being handled further
// down the stack, in an event loop or a processEvents() of whoever handles it: then what he works on must
// stay. GUI thread only; events that are handled outside of all event loops do not count.
class EventDepth : public QObject
{
    Q_OBJECT

public:
    EventDepth();

    // Runs the function once, when nothing is under way any more, never from inside the call. The function
    // may delete this.
    void whenIdle(std::function<void()> function);

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mark();

    std::function<void()> m_function;
    bool m_isUnderWay = false;
    // While a function waits: a loop that has held the mark back once does not look at it again before
    // something is posted, and if nothing is under way, there has to be an event that the mark is of.
    QTimer m_alarm;
};

} // namespace zk::app
