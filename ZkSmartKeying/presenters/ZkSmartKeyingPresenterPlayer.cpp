// The frame on the player, and tracking, which the player shows.

#include "ZkSmartKeyingPresenter_p.h"

void ZkSmartKeyingPresenter::zoomFrame(float level, const QPointF &anchor)
{
    Q_D(ZkSmartKeyingPresenter);
    d->zoomer()->zoom(level, anchor);
}

float ZkSmartKeyingPresenter::zoomLevel(bool effective) const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->zoomer()->zoomLevel(effective);
}

float ZkSmartKeyingPresenter::getNextZoomLevel(int step) const
{
    return playerPresenter()->zoomerPresenter()->getNextZoomLevel(step);
}

QRect ZkSmartKeyingPresenter::canvasRect() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->zoomer()->frameRect().toRect();
}

void ZkSmartKeyingPresenter::startMoveFrame()
{
    Q_D(ZkSmartKeyingPresenter);
    d->zoomer()->beginPan();
}

void ZkSmartKeyingPresenter::moveFrame(const QPointF &offset)
{
    Q_D(ZkSmartKeyingPresenter);
    d->zoomer()->panBy(offset);
}

void ZkSmartKeyingPresenter::finishMoveFrame()
{
    Q_D(ZkSmartKeyingPresenter);
    d->zoomer()->endPan();
}

bool ZkSmartKeyingPresenter::canMoveFrame() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return (playerEditMode() == HandMode || d->frameMoving) && d->zoomer()->canPan();
}

bool ZkSmartKeyingPresenter::isFrameMoving() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->frameMoving;
}

void ZkSmartKeyingPresenter::setFrameMoving(bool moving)
{
    Q_D(ZkSmartKeyingPresenter);
    d->frameMoving = moving;
}

void ZkSmartKeyingPresenter::beginTrackingMode(ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                                               ZKSMARTKEYING::ZkSegmentToTrackType type)
{
    Q_D(ZkSmartKeyingPresenter);
    d->playerPresenter->stopPlay();
    const IZkSmartKeyingService *const service = smartKeyingService();
    if (!service || service->maskItemCount() <= 0) {
        emit sigPrompt(DrawMaskFirstPrompt);
        return;
    }
    switch (d->editController->startTracking(currentFrame(), direct, type)) {
    case ZKSMARTKEYING::TrackingFailed:
        emit sigPrompt(TrackingFailedPrompt);
        return;
    case ZKSMARTKEYING::NothingToTrack:
        emit sigPrompt(NothingToTrackPrompt);
        return;
    default:
        break;
    }
    d->toTrackDirect = direct;
    d->toTrackType = type;
    d->modified = true;
    emit sigTrackingModeChanged(isTrackingMode());
}

void ZkSmartKeyingPresenter::beginTrackingModeForSimpleMode()
{
    const bool gif = isGifMode();
    beginTrackingMode(gif || isTracked() ? ZKSMARTKEYING::TrackForward : ZKSMARTKEYING::TrackBoth,
                      gif ? ZKSMARTKEYING::TrackWholeClip : ZKSMARTKEYING::TrackToClipEnd);
}

void ZkSmartKeyingPresenter::stopTrackingMode()
{
    Q_D(ZkSmartKeyingPresenter);
    d->closing = true;
    d->editController->stopTracking();
    d->playerPresenter->stopPlay();
    d->playerPresenter->mediaPlayer()->setMode(ZKPLAYER::PausedState, 0);
    emit sigTrackingModeChanged(isTrackingMode());
}

bool ZkSmartKeyingPresenter::isTracked() const
{
    const IZkSmartKeyingService *const service = smartKeyingService();
    return service && service->isTracked();
}

ZKSMARTKEYING::ZkSegmentToTrackDirect ZkSmartKeyingPresenter::toTrackDirect() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->toTrackDirect;
}

ZKSMARTKEYING::ZkSegmentToTrackType ZkSmartKeyingPresenter::toTrackType() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->toTrackType;
}
