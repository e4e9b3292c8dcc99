// The progress of one segmentation: shown, ramped up while the engine works, finished with its result.

#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkSmartKeyingLog.h"

#include <QEventLoop>
#include <QThread>

namespace {

const int StartPercent = 10;
const int RampEndPercent = 80;
const int AdvanceEndPercent = 95;
const int AdvanceStep = 5;
const int RampCounterStep = 70; // 25 of them count one percent up
const int RampCounterEnd = 1750;
const int RampPause = 5; // ms
const int AdvancePause = 10; // ms
const int CompletePause = 5; // ms
const int ResultTimeout = 6000; // ms

} // namespace

void ZkSmartKeyingPresenterPrivate::emitProgress(int percent)
{
    segmentProgress = percent;
    emit q->sigSegmentProgressValueChanged(percent);
}

void ZkSmartKeyingPresenterPrivate::setProgress(int percent)
{
    if (segmentProgress != percent)
        emitProgress(percent);
}

void ZkSmartKeyingPresenterPrivate::setProgressShowing(bool showing)
{
    if (segmentProgressShowing == showing)
        return;
    segmentProgressShowing = showing;
    emit q->sigSegmentProgressStatusChanged(showing);
}

void ZkSmartKeyingPresenterPrivate::abandonProgress()
{
    if (!segmentProgressShowing)
        return;
    setProgressShowing(false);
    q->setUIControlsEnabled(true);
}

void ZkSmartKeyingPresenterPrivate::beginProgress()
{
    progressTimer.stop();
    progressStep = 0;
    segmentProgress = 0;
    setProgressShowing(true);
    q->setUIControlsEnabled(false);
    if (!useEventStarted)
        startUseEvent();
    emitProgress(0);
}

void ZkSmartKeyingPresenterPrivate::runProgressRamp()
{
    if (!segmentProgressShowing)
        return;
    if (segmentProgress < StartPercent)
        emitProgress(StartPercent);
    progressStep = 0;
    for (int counter = RampCounterStep; counter <= RampCounterEnd; counter += RampCounterStep) {
        ++progressStep;
        const int target = qMin(StartPercent + counter / 25, RampEndPercent);
        if (segmentProgress < target)
            emitProgress(target);
        // A receiver may have hidden the progress.
        if (!segmentProgressShowing)
            return;
        if (target == RampEndPercent)
            break;
        QThread::msleep(RampPause);
    }
    if (segmentProgress < RampEndPercent)
        emitProgress(RampEndPercent);
}

void ZkSmartKeyingPresenterPrivate::advanceProgress()
{
    while (segmentProgressShowing && segmentProgress < AdvanceEndPercent) {
        emitProgress(qBound(0, segmentProgress + AdvanceStep, AdvanceEndPercent));
        if (segmentProgress < AdvanceEndPercent)
            QThread::msleep(AdvancePause);
    }
}

void ZkSmartKeyingPresenterPrivate::completeProgress()
{
    if (!segmentProgressShowing)
        return;
    for (int percent = AdvanceEndPercent + 1; percent <= 100; ++percent) {
        setProgress(percent);
        QThread::msleep(CompletePause);
    }
    restoreStillEffect();
    setProgress(100);
    setProgressShowing(false);
    finishUseEvent();
    q->setUIControlsEnabled(true);
    progressTimer.start();
}

void ZkSmartKeyingPresenterPrivate::executeEventLoopWait(bool simple)
{
    const char *const mode = simple ? "Simple" : "Progress";
    const auto log = [](const QString &text) {
        ZK_LOG(ZKLOG::Info, "ZkSmartKeyingPresenterPrivate", "executeEventLoopWait", text);
    };
    log(QString::asprintf("%s mode wait started", mode));
    QEventLoop loop;
    const auto finished = QObject::connect(
        playerPresenter, &ZkMediaPlayerPresenter::sigSeekFinished, &loop, [&loop, simple, log] {
            log(QString::asprintf("%s finished signal received, quitting event loop",
                                  simple ? "Seek" : "Algorithm"));
            loop.quit();
        });
    QTimer timer;
    timer.setSingleShot(true);
    const auto timedOut = QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(ResultTimeout);
    // Another stroke must not start before this one is on screen.
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    log(QString::asprintf("%s mode wait completed", mode));
    QObject::disconnect(finished);
    QObject::disconnect(timedOut);
}
