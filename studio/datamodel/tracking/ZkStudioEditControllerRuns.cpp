// The part of the controller that has to do with worker threads.
#include "ZkStudioEditController.h"

#include "../ZkPlayerFeedback.h"
#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "../timeline/ZkStudioEffectList.h"
#include "ZkApplyStep.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>

Q_LOGGING_CATEGORY(lcRuns, "zk.edit.runs")

using namespace zk::datamodel;

namespace {

template<typename Run>
void removeDone(std::vector<std::unique_ptr<Run>> *runs)
{
    const auto isDone = [](const std::unique_ptr<Run> &run) { return run->isDone(); };
    runs->erase(std::remove_if(runs->begin(), runs->end(), isDone), runs->end());
}

} // namespace

int ZkStudioEditController::startTracking(qint64 frame,
                                          ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                                          ZKSMARTKEYING::ZkSegmentToTrackType type)
{
    if (!m_timeline || isTracking() || !service()->isEnabled()
        || !QFileInfo::exists(m_projectClip->media().path))
        return ZKSMARTKEYING::TrackingFailed;
    if (m_type == ZKSMARTKEYING::AIErasing)
        type = ZKSMARTKEYING::TrackWholeClip;
    Segments seeds = service()->segments();
    if (!seeds.isSingleObject())
        seeds.setTracked({});
    const qint64 frameCount = m_timeline->frameCount();
    const QVector<TrackingLeg> legs =
        trackingPlan(seeds, frameCount, qBound<qint64>(0, frame, frameCount - 1), direct, type);
    if (legs.isEmpty())
        return ZKSMARTKEYING::NothingToTrack;
    launchTracking(seeds, legs);
    return ZKSMARTKEYING::TrackingStarted;
}

void ZkStudioEditController::launchTracking(const Segments &seeds, const QVector<TrackingLeg> &legs)
{
    reapRuns();
    m_trackedBefore = service()->segments().tracked();
    m_hasTracked = false;
    service()->beginTracking(seeds.tracked());
    TrackingRun::Receiver receiver;
    receiver.tracked = [this](quint64 serial, const TrackedFrame &tracked) {
        onTracked(serial, tracked);
    };
    receiver.finished = [this](quint64 serial, const QString &error) {
        onTrackingFinished(serial, error);
    };
    const ZkStudioClip *clip = m_timeline->clip();
    m_tracking = std::make_unique<TrackingRun>(
        TrackingTask {clip->media(), clip->inFrame(), seeds, legs, m_timeline->engine()},
        m_context.get(),
        receiver);
    service()->setLocked(true);
    m_timeline->undoRedoService()->setBlocked(true);
    service()->setWorkMode(ZKSMARTKEYING::TrackingMode);
    if (m_player)
        m_player->trackingStarted();
}

// The player's observers may stop the run, or delete the controller, from inside each of its calls.
void ZkStudioEditController::onTracked(quint64 serial, const TrackedFrame &tracked)
{
    const QPointer<QObject> alive(m_context.get());
    const auto isCurrent = [&] { return alive && isTracking() && m_tracking->serial() == serial; };
    if (!isCurrent())
        return;
    m_hasTracked = true;
    const bool isSkipped = tracked.skippedTo >= 0;
    if (isSkipped)
        service()->storeSceneCut(tracked.frame, tracked.skippedTo, tracked.isForward);
    else
        service()->storeTracked(tracked.frame, tracked.isForward, tracked.side);
    if (m_player && !isSkipped)
        m_player->showTrackedFrame(tracked.frame);
    if (isCurrent() && m_player)
        m_player->trackingProgress(tracked.percent);
}

void ZkStudioEditController::onTrackingFinished(quint64 serial, const QString &error)
{
    if (!isTracking() || m_tracking->serial() != serial)
        return;
    if (!error.isEmpty())
        qCWarning(lcRuns) << "Tracking broke off:" << error;
    endTracking();
}

void ZkStudioEditController::stopTracking()
{
    if (isTracking())
        endTracking();
}

// First everything is as it was before the run, then the player says so, and last the change records
// go out, all together. Whoever hears of the last two may delete the controller.
void ZkStudioEditController::endTracking()
{
    m_tracking->stop();
    m_oldTrackings.push_back(std::move(m_tracking));
    ZkStudioUndoRedoService *undo = m_timeline->undoRedoService();
    service()->setLocked(false);
    undo->setBlocked(false);
    service()->setWorkMode(ZKSMARTKEYING::EditingMode);
    undo->pauseEvents();
    if (m_hasTracked)
        service()->closeTracking(m_trackedBefore, tr("Track"));
    else
        service()->setTracked(m_trackedBefore);
    m_trackedBefore.clear();
    enableCutoutEffects();
    const QPointer<QObject> alive(m_context.get());
    if (m_player)
        m_player->trackingFinished();
    if (alive)
        undo->resumeEvents();
}

// A stroke switches the look off, so that the user sees what he paints on. The change records go out
// last: whoever hears of them may delete the controller.
void ZkStudioEditController::enableCutoutEffects()
{
    ZkStudioUndoRedoService *undo = m_timeline->undoRedoService();
    const IZkEffectList *effects = m_timeline->clip()->effects();
    undo->pauseEvents();
    undo->suspendRecording();
    for (int i = 0; i < effects->count(); ++i) {
        IZkEffect *effect = effects->effectAt(i);
        if (effect->descriptor()->type() == ZKTIMELINE::SmartKeyingEffect)
            effect->setEnabled(true);
    }
    undo->resumeRecording();
    undo->resumeEvents();
}

void ZkStudioEditController::apply()
{
    if (!m_timeline || m_applying)
        return;
    const QPointer<QObject> alive(m_context.get());
    stopTracking();
    if (alive)
        enableCutoutEffects();
    if (!alive)
        return;
    reapRuns();
    ApplyRun::Receiver receiver;
    receiver.progress = [this](quint64 serial, int percent) { onApplyProgress(serial, percent); };
    receiver.finished = [this](quint64 serial, const ApplyResult &result) {
        onApplyFinished(serial, result);
    };
    m_applying = std::make_unique<ApplyRun>(ApplyTask {service()->segments(),
                                                       service()->isMaskInverted(),
                                                       m_timeline->frameSize(),
                                                       m_timeline->frameCount()},
                                            m_context.get(),
                                            receiver);
}

void ZkStudioEditController::cancelApply()
{
    if (!m_applying)
        return;
    m_applying->cancel();
    m_oldApplyings.push_back(std::move(m_applying));
    QMetaObject::invokeMethod(
        m_context.get(),
        [this] { notifySaveFinished(ZKSMARTKEYING::SaveCancelled); },
        Qt::QueuedConnection);
}

void ZkStudioEditController::onApplyProgress(quint64 serial, int percent)
{
    if (!m_applying || m_applying->serial() != serial)
        return;
    m_observers.forEach([=](IZkSmartKeyingEditControllerObserver *observer) {
        observer->onSavingProgressEvent(percent);
    });
}

// The run is over before anybody hears of it: an observer may apply again or delete the controller.
void ZkStudioEditController::onApplyFinished(quint64 serial, const ApplyResult &result)
{
    if (!m_applying || m_applying->serial() != serial)
        return;
    m_oldApplyings.push_back(std::move(m_applying));
    if (result.mattes.isEmpty()) {
        qCWarning(lcRuns) << "A mask is damaged; the clip stays as it was";
        notifySaveFinished(ZKSMARTKEYING::SaveFailed);
        return;
    }
    const bool isCutOut = m_type == ZKSMARTKEYING::SmartCutout && !service()->segments().isEmpty();
    if (isCutOut && result.framesWithoutMask > 0)
        qCWarning(lcRuns) << result.framesWithoutMask << "of" << result.mattes.size()
                          << "frames have no mask";
    applyCutout(m_projectClip, *m_timeline->clip(), m_type, result.mattes);
    notifySaveFinished(ZKSMARTKEYING::SaveSucceeded);
}

void ZkStudioEditController::notifySaveFinished(int result)
{
    m_observers.forEach([=](IZkSmartKeyingEditControllerObserver *observer) {
        observer->onSaveFinishedEvent(result);
    });
}

// Nobody hears of runs that are given up.
void ZkStudioEditController::abandonRuns()
{
    if (m_applying) {
        m_applying->cancel();
        m_oldApplyings.push_back(std::move(m_applying));
    }
    stopTracking();
}

void ZkStudioEditController::reapRuns()
{
    removeDone(&m_oldTrackings);
    removeDone(&m_oldApplyings);
}
