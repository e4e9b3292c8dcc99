// Host utilities. Needs Qt Core alone.
#pragma once

#include "ZkGlobal.h"

#include <QElapsedTimer>
#include <QString>

// Measures the scope that it lives in and logs "NAME: N ms" at ZKLOG::Detail when it ends.
class ZKUTILITY_EXPORT ZkElapsedTimer
{
public:
    explicit ZkElapsedTimer(const QString &name);
    ~ZkElapsedTimer();

    qint64 elapsedMs() const { return m_timer.elapsed(); }

private:
    Q_DISABLE_COPY(ZkElapsedTimer)
    QString m_name;
    QElapsedTimer m_timer;
};
