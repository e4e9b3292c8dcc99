#include "ZkUtility.h"

QString ZkConvertUtility::frame2String(int frame, float framesPerSecond)
{
    const int rate = qMax(1, qRound(framesPerSecond));
    const int seconds = frame / rate;
    return QStringLiteral("%1:%2:%3:%4")
        .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'))
        .arg(frame % rate, 2, 10, QLatin1Char('0'));
}
