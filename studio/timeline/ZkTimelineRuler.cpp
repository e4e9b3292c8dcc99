#include "ZkTimelineRuler.h"

#include "ZkUtility.h"

#include <QVector>

namespace zk::timeline {

namespace {

constexpr double labelGap = 24; // pixels between two time codes
constexpr double markGap = 6; // pixels between two marks

int framesPerSecond(double frameRate)
{
    return qMax(1, qRound(frameRate));
}

// In frames, in ascending order.
QVector<qint64> niceSteps(int framesPerSecond)
{
    QVector<qint64> steps;
    for (int part = 1; part < framesPerSecond; ++part) {
        if (framesPerSecond % part == 0)
            steps.append(part);
    }
    for (const int seconds : {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 14400})
        steps.append(qint64(seconds) * framesPerSecond);
    return steps;
}

} // namespace

RulerSteps rulerSteps(double frameRate, double pixelsPerFrame, double labelWidth)
{
    const QVector<qint64> steps = niceSteps(framesPerSecond(frameRate));
    RulerSteps result;
    result.major = steps.constLast();
    for (const qint64 step : steps) {
        if (double(step) * pixelsPerFrame >= labelWidth + labelGap) {
            result.major = step;
            break;
        }
    }
    result.minor = result.major;
    for (const qint64 step : steps) {
        if (result.major % step == 0 && double(step) * pixelsPerFrame >= markGap) {
            result.minor = qMin(step, result.major);
            break;
        }
    }
    return result;
}

QString timeCode(qint64 frame, double frameRate)
{
    return ZkConvertUtility::frame2String(int(frame), float(frameRate));
}

} // namespace zk::timeline
