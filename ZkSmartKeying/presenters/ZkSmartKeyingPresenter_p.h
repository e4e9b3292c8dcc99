// Not public: the state of ZkSmartKeyingPresenter and its ears on the host. It may change at any time.
#pragma once

#include "ZkSmartCutoutEvents.h"
#include "ZkSmartKeyingPresenter.h"

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <vector>

class ZkSmartKeyingPresenterPrivate final : public IZkTimelineEventObserver,
                                            public IZkUndoRedoServiceEventObserver,
                                            public IZkSmartKeyingEditControllerObserver
{
public:
    using ControllerConnector =
        ZkObserverConnector<IZkSmartKeyingEditController, ZkSmartKeyingPresenterPrivate>;

    ZkSmartKeyingPresenterPrivate(ZkSmartKeyingPresenter *presenter, IZkClip *clip);

    // Lets go of the host's objects; the last call before the destructor.
    void tearDown();
    // Apart from the constructor: what it sets going calls back into the presenter.
    void setUp(ZKSMARTKEYING::ZkSmartKeyingBusinessType type, IZkClip *clip);
    void connectPlayer();
    void listenToModelLoad();

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override;
    void onUndoRedoChangedEvent() override;
    void onSavingProgressEvent(int progress) override;
    void onSaveFinishedEvent(int result) override;
    void onNodeChangedEvent(qint64 frame) override;

    void followPlayerState(int state);
    void followPlayerProperty(int property);

    IZkMediaPlayerZoomer *zoomer() const { return playerPresenter->zoomer(); }
    int minimumPenWidth() const;
    ZkRange<int> penRange() const;
    void applyPenPixelWidth(int width);
    void bringPenIntoRange();
    void setEditMode(int mode);

    // setMask(), step by step.
    bool acceptsMask(const QImage &mask, qint64 frame);
    void addMask(const QImage &mask, qint64 frame);
    bool eraseMask(const QImage &mask, qint64 frame);
    void hideEffect();
    void restoreStillEffect();

    // The progress of one segmentation. The work itself gives no percentage, so it is animated.
    void beginProgress();
    void runProgressRamp();
    void advanceProgress();
    void completeProgress();
    void setProgress(int percent);
    void emitProgress(int percent);
    void setProgressShowing(bool showing);
    void abandonProgress();
    void executeEventLoopWait(bool simple);

    void downloadPreset(const QModelIndex &index);
    QModelIndex indexOfItem(const IZkAbstractMediaItem *item) const; // invalid: not listed

    void startUseEvent();
    void failUseEvent(const QString &errorCode, const QString &reason);
    void finishUseEvent();

    ZkSmartKeyingPresenter *q;
    ZkMediaPlayerPresenter *playerPresenter = nullptr;
    ZTimelinePresenter *timelinePresenter = nullptr;
    IZkSmartKeyingEditController *editController = nullptr;
    ZkPlayheadConnector playheadConnector;
    int playerEditMode = ZkSmartKeyingPresenter::KeepMode;
    ZKSMARTKEYING::ZkSegmentToTrackDirect toTrackDirect = ZKSMARTKEYING::TrackBoth;
    ZKSMARTKEYING::ZkSegmentToTrackType toTrackType = ZKSMARTKEYING::TrackToClipEnd;
    int defaultPenPixelWidth = 30;
    int penPixelWidth = 30;
    int penDrawWidth = 10;
    bool modified = false; // in a way that the history does not know
    bool penPixelWidthChanging = false;
    bool frameMoving = false;
    qint64 initialFrame = 0;
    bool initSuccessful = false;
    bool maskBusy = false; // a segment change answers a stroke
    std::vector<std::unique_ptr<ControllerConnector>> observerConnectors;
    ZKSMARTKEYING::ZkSmartKeyingBusinessType businessType = ZKSMARTKEYING::SmartCutout;
    bool startedTracking = false;
    ZCutoutPresetItemManager *presetManager = nullptr;
    bool closing = false;
    bool segmentProgressShowing = false;
    int segmentProgress = 0; // percent
    bool uiControlsEnabled = true;
    bool progressEnabled = true;
    int progressStep = 0;
    bool inTimelineChange = false;
    QTimer progressTimer;
    ZkSmartCutoutUseRecord useEvent;
    QElapsedTimer useTimer;
    bool useEventStarted = false;
    std::unique_ptr<ZkCustomEventListener> modelLoadListener;

private:
    Q_DISABLE_COPY(ZkSmartKeyingPresenterPrivate)

    bool reportSelectAreaChange(const ZkTimelineChanges &changes);
    void reportSegmentChange();
    void reportEffectChanges(const ZkTimelineChanges &changes);
    void waitForSegment();
    void observeEditTimeline();
};

// The work mode that goes with what the player does.
void zkFollowPlayerState(ZkSmartKeyingPresenter *presenter, int state);
