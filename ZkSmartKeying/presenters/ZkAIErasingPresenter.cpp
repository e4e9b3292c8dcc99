#include "ZkAIErasingPresenter_p.h"

#include "ZkAIErasingEvents.h"
#include "ZkNotifTrackingResultChangedUndoRedo.h"

#include "../ZkSmartKeyingLog.h"

#include "ZkMediaPlayer.h"
#include "ZkUtility.h"

namespace {

const int MaskAlpha = 71;

// Enough to tell presenters apart in a log.
uint shortAddress(const void *object)
{
    return static_cast<uint>(reinterpret_cast<quintptr>(object));
}

} // namespace

ZkAIErasingPresenter::ZkAIErasingPresenter(IZkClip *clip, QObject *parent)
    : ZkSmartKeyingPresenter(ZKSMARTKEYING::AIErasing, clip, parent)
    , d_ptr(std::make_unique<ZkAIErasingPresenterPrivate>(this))
{
    Q_D(ZkAIErasingPresenter);
    ZK_LOG(ZKLOG::Info,
           "ZkAIErasingPresenter",
           "ZkAIErasingPresenter",
           QString::asprintf("ZkAIErasingPresenter created, %x", shortAddress(this)));
    d->cropSelectorPresenter = std::make_unique<ZkAIErasingCropSelectorPresenter>(this, this);
    if (!isInitSuccessful())
        return;
    if (IZkSmartKeyingService *const service = smartKeyingService())
        service->setOptionFlag(false);
    setProgressEnabled(false);
    connect(this, &ZkSmartKeyingPresenter::sigDrawingFinished, this, [d] { d->sendUseEvent(); });
    connect(this,
            &ZkSmartKeyingPresenter::sigSmartKeyingSegmentChanged,
            this,
            &ZkAIErasingPresenter::updateErasingSegmentCount);
    connect(playerPresenter(), &ZkMediaPlayerPresenter::sigStateChanged, this, [d](int state) {
        d->followPlayerState(state);
    });
}

ZkAIErasingPresenter::~ZkAIErasingPresenter()
{
    ZK_LOG(ZKLOG::Info,
           "ZkAIErasingPresenter",
           "~ZkAIErasingPresenter",
           QString::asprintf("ZkAIErasingPresenter destroyed, %x", shortAddress(this)));
}

void ZkAIErasingPresenter::reset()
{
    Q_D(ZkAIErasingPresenter);
    // A run would bring back what is cleared here.
    if (isTrackingMode())
        stopTrackingMode();
    beginMacro(tr("reset"));
    if (smartKeyingService())
        d->clearTracking();
    if (d->cropSelectorPresenter)
        d->cropSelectorPresenter->clearAllCropRects();
    initMaskRegionColor();
    endMacro();
    // As after the base's reset: stopping was not for good.
    setClosing(false);
}

void ZkAIErasingPresenter::save()
{
    Q_D(ZkAIErasingPresenter);
    if (!smartKeyingService() || !editController())
        return;
    d->takeSnapshot();
    {
        ZkUndoRedoEnableCommander notRecorded(undoRedoService(), false);
        d->removeSegmentNodes();
    }
    undoRedoService()->clearHistory();
    auto *const step = new ZkNotifTrackingResultChangedUndoRedo;
    connect(
        step,
        &ZkNotifTrackingResultChangedUndoRedo::sigRedo,
        this,
        [d] { d->redoTracking(); },
        Qt::DirectConnection);
    connect(
        step,
        &ZkNotifTrackingResultChangedUndoRedo::sigUndo,
        this,
        [d] { d->undoTracking(); },
        Qt::DirectConnection);
    undoRedoService()->push(step);
}

void ZkAIErasingPresenter::discard()
{
    Q_D(ZkAIErasingPresenter);
    if (!smartKeyingService())
        return;
    d->takeSnapshot();
    {
        ZkUndoRedoEnableCommander notRecorded(undoRedoService(), false);
        d->removeSegmentNodes();
        d->clearTracking();
    }
    initMaskRegionColor();
    undoRedoService()->clearHistory();
}

void ZkAIErasingPresenter::beginTracking()
{
    beginTrackingMode(ZKSMARTKEYING::TrackBoth, ZKSMARTKEYING::TrackToClipEnd);
    emit sigBeginTracking();
}

ZkAIErasingPresenter::RemoveType ZkAIErasingPresenter::removeType() const
{
    return m_removeType;
}

void ZkAIErasingPresenter::setRemoveType(RemoveType type)
{
    m_removeType = type;
}

bool ZkAIErasingPresenter::hasTracked() const
{
    Q_D(const ZkAIErasingPresenter);
    return d->hasTracked;
}

void ZkAIErasingPresenter::setHasTracked(bool tracked)
{
    Q_D(ZkAIErasingPresenter);
    d->hasTracked = tracked;
}

qint64 ZkAIErasingPresenter::trackingDuration() const
{
    Q_D(const ZkAIErasingPresenter);
    return d->trackingDuration;
}

void ZkAIErasingPresenter::setTrackingDuration(qint64 duration)
{
    Q_D(ZkAIErasingPresenter);
    d->trackingDuration = duration;
}

int ZkAIErasingPresenter::getErasingSegmentCount() const
{
    Q_D(const ZkAIErasingPresenter);
    return d->erasingSegmentCount;
}

bool ZkAIErasingPresenter::hasErasingSegment() const
{
    return getErasingSegmentCount() > 0;
}

void ZkAIErasingPresenter::updateErasingSegmentCount()
{
    Q_D(ZkAIErasingPresenter);
    if (const IZkSmartKeyingService *const service = smartKeyingService())
        d->erasingSegmentCount = service->segmentCount();
}

QString ZkAIErasingPresenter::getFileType() const
{
    return isImageClip() ? QStringLiteral("image") : QStringLiteral("video");
}

bool ZkAIErasingPresenter::isImageClip() const
{
    return isPhotoMode();
}

bool ZkAIErasingPresenter::isFrameMovingMode() const
{
    return playerEditMode() == HandMode;
}

bool ZkAIErasingPresenter::checkNetworkConnection() const
{
    return ZkNetwork::IsNetworkConnect();
}

ZkAIErasingCropSelectorPresenter *ZkAIErasingPresenter::cropSelectorPresenter() const
{
    Q_D(const ZkAIErasingPresenter);
    return d->cropSelectorPresenter.get();
}

bool ZkAIErasingPresenter::registerEditTime(qint64 begin, qint64 end) const
{
    return editController()->registerEditTime(begin, end);
}

bool ZkAIErasingPresenter::changeEditTime(qint64 begin, qint64 end) const
{
    return editController()->changeEditTime(begin, end);
}

bool ZkAIErasingPresenter::changeEditTimeCns(qint64 begin, qint64 end) const
{
    return editController()->changeEditTimeCns(begin, end);
}

bool ZkAIErasingPresenter::getEditTime(qint64 &begin, qint64 &end) const
{
    return editController()->getEditTime(begin, end);
}

void ZkAIErasingPresenter::setUndoManager(IZkUndoRedoService *first, IZkUndoRedoService *second)
{
    editController()->setUndoManager(first, second);
}

QString ZkAIErasingPresenter::frame2Time(qint64 frame) const
{
    return ZkConvertUtility::frame2String(static_cast<int>(frame),
                                          playerPresenter()->mediaFrameRate());
}

void ZkAIErasingPresenter::initMaskRegionColor()
{
    IZkSmartKeyingService *const service = smartKeyingService();
    if (!service)
        return;
    ZkUndoRedoEnableCommander notRecorded(undoRedoService(), false);
    service->setMaskRegionColor(QColor(85, 229, 197, MaskAlpha));
    service->setMaskRegionAlpha(MaskAlpha);
}

void ZkAIErasingPresenter::trackClickEvent(const QString &buttonName)
{
    ZkAIErasingClickEvent(buttonName, getFileType(), static_cast<quint32>(getErasingSegmentCount()))
        .sendEvent();
}
