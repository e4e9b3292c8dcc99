#include "ZkAIErasingPresenter_p.h"
#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkCallLater.h"

#include "ZkMediaPlayer.h"

namespace {

const int ResetDelay = 10; // ms after which views may look at what has been cleared

} // namespace

ZkAIErasingPresenterPrivate::ZkAIErasingPresenterPrivate(ZkAIErasingPresenter *presenter)
    : q(presenter)
{ }

void ZkAIErasingPresenterPrivate::sendUseEvent()
{
    const bool adds = q->playerEditMode() == ZkSmartKeyingPresenter::KeepMode;
    ZkSmartMaskUseEvent(adds ? QStringLiteral("brush") : QStringLiteral("eraser"), q->getFileType())
        .sendEvent();
}

void ZkAIErasingPresenterPrivate::followPlayerState(int state)
{
    if (erasingSegmentCount > 0)
        zkFollowPlayerState(q, state);
}

void ZkAIErasingPresenterPrivate::clearTracking()
{
    q->smartKeyingService()->clearTrackingResults();
    q->setRemoveType(ZkAIErasingPresenter::DefaultRemoveType);
    hasTracked = false;
    zkCallLater(ResetDelay, q, &ZkAIErasingPresenter::sigResetAllData);
}

// From the last one on: removing moves those behind it.
void ZkAIErasingPresenterPrivate::removeSegmentNodes()
{
    IZkSmartKeyingService *const service = q->smartKeyingService();
    for (int i = service->segmentCount() - 1; i >= 0; --i) {
        const qint64 node = service->segmentNodeAt(i);
        service->removeSegmentNode(node);
        emit q->sigNodeChanged(node);
    }
}

void ZkAIErasingPresenterPrivate::takeSnapshot()
{
    const IZkSmartKeyingService *const service = q->smartKeyingService();
    if (!service)
        return;
    trackingSnapshot.clear();
    const int count = service->segmentCount();
    trackingSnapshot.reserve(count);
    for (int i = 0; i < count; ++i) {
        const qint64 node = service->segmentNodeAt(i);
        trackingSnapshot.append({node, service->nodeResult(node)});
    }
}

void ZkAIErasingPresenterPrivate::restoreSnapshot()
{
    IZkSmartKeyingService *const service = q->smartKeyingService();
    if (!service || !q->editController() || trackingSnapshot.isEmpty())
        return;
    ZkDisableUndoRedoCommander notRecorded(q->undoRedoService());
    // A receiver may take the next snapshot.
    const auto entries = trackingSnapshot;
    for (const auto &entry : entries) {
        service->setNodeResult(entry.first, entry.second);
        emit q->sigNodeChangedSync(entry.first);
    }
}

void ZkAIErasingPresenterPrivate::redoTracking()
{
    if (hasTracked)
        return;
    restoreSnapshot();
    q->beginTracking();
}

void ZkAIErasingPresenterPrivate::undoTracking()
{
    if (!hasTracked || !q->smartKeyingService())
        return;
    {
        ZkDisableUndoRedoCommander notRecorded(q->undoRedoService());
        clearTracking();
    }
    q->initMaskRegionColor();
}
