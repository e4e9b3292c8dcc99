#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkCallLater.h"
#include "../ZkSmartKeyingLog.h"
#include "../presets/ZCutoutPresetItemManager.h"

#include "ZkUtility.h"

namespace {

const int ProgressResetDelay = 1000; // ms for which the finished value stays
const int MaximumPenWidth = 300; // widget pixels

} // namespace

ZkSmartKeyingPresenterPrivate::ZkSmartKeyingPresenterPrivate(ZkSmartKeyingPresenter *presenter,
                                                             IZkClip *clip)
    : q(presenter)
    , initialFrame(clip->timeline()->playhead()->position())
{
    ZK_LOG(ZKLOG::Info,
           "ZkSmartKeyingPresenterPrivate",
           "ZkSmartKeyingPresenterPrivate",
           QStringLiteral("ZkSmartKeyingPresenterPrivate new"));
}

void ZkSmartKeyingPresenterPrivate::tearDown()
{
    ZK_LOG(ZKLOG::Info,
           "ZkSmartKeyingPresenterPrivate",
           "~ZkSmartKeyingPresenterPrivate",
           QStringLiteral("ZkSmartKeyingPresenterPrivate delloc"));
    if (initSuccessful) {
        IZkTimeline *const timeline = editController->editTimeline();
        timeline->removeEventObserver(this);
        timeline->undoRedoService()->removeObserver(this);
    }
    playheadConnector.clear();
    playerPresenter->mediaPlayer()->stop();
    playerPresenter->mediaPlayer()->detachSource();
    editController->releaseMediaPlayer();
    delete playerPresenter;
    observerConnectors.clear();
    releaseSmartKeyingEditController(editController);
    // Deferred, because a download's callback may be what closes the workspace; at the latest the
    // manager dies as the presenter's child.
    if (presetManager)
        presetManager->release();
}

void ZkSmartKeyingPresenterPrivate::setUp(ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                                          IZkClip *clip)
{
    playerPresenter = new ZkMediaPlayerPresenter(q);
    editController = createSmartKeyingEditController();
    observerConnectors.push_back(std::make_unique<ControllerConnector>(editController, this));
    const bool initialised =
        editController->initialise(clip, playerPresenter->mediaPlayer(), &initialFrame, type);
    businessType = type;
    if (!initialised)
        return;
    observeEditTimeline();
    presetManager = new ZCutoutPresetItemManager(q);
    presetManager->setCategory(ZKVBLMODEL::SmartCutoutCategory);
    presetManager->loadCutoutPresetFolder();
    initSuccessful = true;
    closing = false;
    if (IZkSmartKeyingService *const service = q->smartKeyingService())
        service->setEnabled(true);
    progressTimer.setSingleShot(true);
    progressTimer.setInterval(ProgressResetDelay);
    QObject::connect(&progressTimer, &QTimer::timeout, q, [this] {
        segmentProgress = 0;
        progressStep = 0;
    });
}

void ZkSmartKeyingPresenterPrivate::observeEditTimeline()
{
    IZkTimeline *const timeline = editController->editTimeline();
    IZkPlayhead *const playhead = timeline->playhead();
    timeline->undoRedoService()->addObserver(this);
    timeline->addEventObserver(this);
    playhead->setFrameRange(timeline->playheadRange());
    playheadConnector.addPlayhead(playhead, ZkPlayheadConnector::EditTimelineRole);
    playheadConnector.addPlayhead(playerPresenter->playhead(), ZkPlayheadConnector::PlayerRole);
}

void ZkSmartKeyingPresenterPrivate::connectPlayer()
{
    QObject::connect(playerPresenter,
                     &ZkMediaPlayerPresenter::sigStateChanged,
                     q,
                     [this](int state) { followPlayerState(state); });
    QObject::connect(playerPresenter,
                     &ZkMediaPlayerPresenter::sigPropertyChanged,
                     q,
                     [this](int property) { followPlayerProperty(property); });
    QObject::connect(playerPresenter,
                     &ZkMediaPlayerPresenter::sigPercentProgress,
                     q,
                     &ZkSmartKeyingPresenter::sigTrackingProgress);
    QObject::connect(playerPresenter,
                     &ZkMediaPlayerPresenter::sigFrameChanged,
                     q,
                     &ZkSmartKeyingPresenter::sigFrameChanged);
}

void ZkSmartKeyingPresenterPrivate::listenToModelLoad()
{
    ZkSmartKeyingPresenter *const presenter = q;
    // Whoever posts the event may do so from another thread, so the signal is only queued here.
    modelLoadListener = std::make_unique<ZkCustomEventListener>(
        QStringLiteral("NotifySmartCutoutModelLoadFinished"), [presenter](const ZkCustomEvent &) {
            QMetaObject::invokeMethod(
                presenter,
                [presenter] { presenter->notifyEffectMediaItemsLoaded(); },
                Qt::QueuedConnection);
            return false;
        });
}

void ZkSmartKeyingPresenterPrivate::onTimelineChangedEvent(const ZkTimelineChanges &changes)
{
    if (reportSelectAreaChange(changes))
        return;
    if (changes.contains(ZKTIMELINE::SegmentChange)) {
        // Waiting for a result runs an event loop in which the next change may arrive.
        if (inTimelineChange)
            return;
        inTimelineChange = true;
        reportSegmentChange();
        inTimelineChange = false;
    }
    reportEffectChanges(changes);
}

bool ZkSmartKeyingPresenterPrivate::reportSelectAreaChange(const ZkTimelineChanges &changes)
{
    using Signal = void (ZkSmartKeyingPresenter::*)();
    static const struct
    {
        int subKind;
        Signal signal;
    } reports[] = {
        {ZKTIMELINE::SelectAreaAdded, &ZkSmartKeyingPresenter::sigAIRemoveSelectAreaAdd},
        {ZKTIMELINE::SelectAreaRemoved, &ZkSmartKeyingPresenter::sigAIRemoveSelectAreaRemove},
        {ZKTIMELINE::SelectAreaUpdated, &ZkSmartKeyingPresenter::sigAIRemoveSelectAreaUpdate},
    };
    for (const auto &report : reports) {
        if (changes.contains(ZKTIMELINE::SegmentChange, report.subKind)) {
            playerPresenter->update();
            emit(q->*report.signal)();
            return true;
        }
    }
    return false;
}

void ZkSmartKeyingPresenterPrivate::reportSegmentChange()
{
    ZkElapsedTimer elapsed(QStringLiteral("ZkSmartKeyingPresenterPrivate::onTimelineChangedEvent"));
    playerPresenter->update();
    if (maskBusy)
        waitForSegment();
    if (!segmentProgressShowing) {
        emit q->sigSmartKeyingSegmentChanged();
        return;
    }
    advanceProgress();
    emit q->sigSmartKeyingSegmentChanged();
    completeProgress();
}

void ZkSmartKeyingPresenterPrivate::waitForSegment()
{
    const bool showsProgress = progressEnabled && segmentProgressShowing;
    if (showsProgress)
        zkCallLater(0, q, [this] { runProgressRamp(); });
    executeEventLoopWait(!showsProgress);
    maskBusy = false;
}

void ZkSmartKeyingPresenterPrivate::reportEffectChanges(const ZkTimelineChanges &changes)
{
    if (changes.contains(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded)) {
        playerPresenter->update();
        emit q->sigEffectAdded();
    }
    if (changes.contains(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectRemoved)) {
        playerPresenter->update();
        emit q->sigEffectRemoved();
    }
    if (changes.contains(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectPropertyChanged)) {
        playerPresenter->update();
        emit q->sigEffectPropertyChanged();
    }
}

void ZkSmartKeyingPresenterPrivate::onUndoRedoChangedEvent()
{
    emit q->sigUndoRedoChanged();
}

void ZkSmartKeyingPresenterPrivate::onSavingProgressEvent(int progress)
{
    emit q->sigSavingProgress(progress);
}

void ZkSmartKeyingPresenterPrivate::onSaveFinishedEvent(int result)
{
    if (result == ZKSMARTKEYING::SaveCancelled)
        emit q->sigSaveCancel();
    else
        emit q->sigSaveFinished(result == ZKSMARTKEYING::SaveSucceeded);
}

void ZkSmartKeyingPresenterPrivate::onNodeChangedEvent(qint64 frame)
{
    emit q->sigNodeChanged(frame);
}

void ZkSmartKeyingPresenterPrivate::followPlayerState(int state)
{
    // AI erasing has a rule of its own.
    if (q->isSmartCutout())
        zkFollowPlayerState(q, state);
}

void zkFollowPlayerState(ZkSmartKeyingPresenter *presenter, int state)
{
    switch (state) {
    case ZKPLAYER::PlayingState:
        presenter->switchWorkMode(ZKSMARTKEYING::PlayingMode);
        break;
    case ZKPLAYER::StoppedState:
    case ZKPLAYER::PausedState:
        presenter->switchWorkMode(ZKSMARTKEYING::EditingMode);
        break;
    default:
        emit presenter->sigTrackingModeChanged(presenter->isTrackingMode());
    }
}

void ZkSmartKeyingPresenterPrivate::followPlayerProperty(int property)
{
    if (property == ZKPLAYER::ZoomProperty) {
        bringPenIntoRange();
        // The views keep the last value, so saying it twice after a change does no harm.
        q->setPenDrawWidth(penPixelWidth);
        emit q->sigFrameZoomed();
    } else if (property == ZKPLAYER::PanProperty) {
        emit q->sigFrameMoved();
    }
}

int ZkSmartKeyingPresenterPrivate::minimumPenWidth() const
{
    const IZkSmartKeyingService *const service = q->smartKeyingService();
    return service ? service->minimumPenWidth(q->canvasRect().size()) : 1;
}

ZkRange<int> ZkSmartKeyingPresenterPrivate::penRange() const
{
    return {minimumPenWidth(), MaximumPenWidth};
}

void ZkSmartKeyingPresenterPrivate::bringPenIntoRange()
{
    const ZkRange<int> range = penRange();
    // On a large enlargement even the maximum covers less than one source pixel: the minimum wins.
    if (!range.contains(penPixelWidth))
        applyPenPixelWidth(qMax(range.minimum, qMin(penPixelWidth, range.maximum)));
}

void ZkSmartKeyingPresenterPrivate::applyPenPixelWidth(int width)
{
    penPixelWidth = width;
    q->setPenDrawWidth(width);
    emit q->sigPenPixelWidthChanged(width);
}

void ZkSmartKeyingPresenterPrivate::setEditMode(int mode)
{
    playerEditMode = mode;
    emit q->sigPlayerEditModeChanged();
}
