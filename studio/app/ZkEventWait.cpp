#include "ZkEventWait.h"

#include "ZkInterrupt.h"

#include <QEventLoop>
#include <QTimer>

namespace zk::app {

namespace {

constexpr int pollMs = 20; // how late an interrupt may be noticed while nothing else happens

} // namespace

bool waitUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    QTimer wakeUp;
    wakeUp.start(pollMs);
    while (!done()) {
        if (isInterrupted())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace zk::app
