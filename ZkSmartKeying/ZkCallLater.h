// Delayed calls of the module; not public.
#pragma once

#include <QTimer>

// As QTimer::singleShot() on a receiver, which must live in this thread. That one's timer outlives the receiver
// and lets go of the call at the end only, whose code is gone when a host has unloaded the module by then.
template<typename Receiver, typename Call>
void zkCallLater(int milliseconds, Receiver *receiver, Call call)
{
    auto *const timer = new QTimer(receiver);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    QObject::connect(timer, &QTimer::timeout, receiver, call);
    timer->start(milliseconds);
}
