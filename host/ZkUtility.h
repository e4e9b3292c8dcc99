// Host utilities. Needs Qt Core alone.
#pragma once

#include "ZkGlobal.h"

#include <QElapsedTimer>
#include <QRectF>
#include <QString>

class ZKUTILITY_EXPORT ZkConvertUtility
{
public:
    // "hh:mm:ss:ff" of a frame that is not negative. A rate such as 29.97 counts 30 frames to the second
    // and drops none; one below 1 counts 1.
    static QString frame2String(int frame, float framesPerSecond);
};

class ZKUTILITY_EXPORT ZkUtility
{
public:
    // The largest rectangle of that ratio (width : height) in the window, centred in it. Empty when the
    // window is empty or the ratio is not a positive number.
    static QRectF getFitCentralWindowRectByRatio(const QRectF &window, double ratio);
};

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
