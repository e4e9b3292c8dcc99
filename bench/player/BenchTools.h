// What the programs here share: waiting in the event loop, watching a widget being painted, and the time
// of processors.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <ctime>
#include <vector>

namespace zk::bench {

constexpr int longestWait = 20000; // milliseconds

// Counts how often a widget is painted, and how long that takes.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint)
            return QObject::eventFilter(watched, event);
        QElapsedTimer timer;
        timer.start();
        watched->event(event);
        milliseconds += double(timer.nsecsElapsed()) * 1e-6;
        ++paints;
        return true;
    }
    int paints = 0;
    double milliseconds = 0; // altogether
};

// Sleeps between events, so that the worker threads have the machine to themselves meanwhile.
template<typename Condition>
bool waitFor(Condition isMet)
{
    QTimer wake;
    wake.start(50);
    QElapsedTimer timer;
    timer.start();
    while (!isMet() && timer.elapsed() < longestWait)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isMet();
}

inline double percentile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[size_t(share * double(values.size() - 1))];
}

struct Times
{
    double wall = 0; // milliseconds
    double processors = 0;
};

// Time on the wall, and that of all processors for this program, which a loaded machine hardly changes.
// (Where std::clock() runs on the wall, the two are the same.)
class Stopwatch
{
public:
    Stopwatch() { m_timer.start(); }
    double milliseconds() const { return double(m_timer.nsecsElapsed()) * 1e-6; }
    double processorMilliseconds() const
    {
        return 1000.0 * double(std::clock() - m_clock) / CLOCKS_PER_SEC;
    }
    Times times() const { return {milliseconds(), processorMilliseconds()}; }

private:
    QElapsedTimer m_timer;
    std::clock_t m_clock = std::clock();
};

inline void sendMouse(QWidget &widget, QEvent::Type type, const QPointF &at)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type,
                      at,
                      isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace zk::bench
