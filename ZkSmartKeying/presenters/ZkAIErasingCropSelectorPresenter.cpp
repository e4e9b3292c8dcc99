#include "ZkAIErasingCropSelectorPresenter_p.h"

#include "../ZkCallLater.h"

ZkAIErasingCropSelectorPresenter::ZkAIErasingCropSelectorPresenter(
    ZkAIErasingPresenter *erasingPresenter, QObject *parent)
    : QObject(parent)
    , d_ptr(std::make_unique<ZkAIErasingCropSelectorPresenterPrivate>(this, erasingPresenter))
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    if (erasingPresenter)
        d->connectErasingPresenter();
    // The overlay is built after this presenter and wants its crops once the event loop runs.
    zkCallLater(0, this, &ZkAIErasingCropSelectorPresenter::sigResyncAllCropRects);
}

ZkAIErasingCropSelectorPresenter::~ZkAIErasingCropSelectorPresenter() = default;

ZkAIErasingPresenter *ZkAIErasingCropSelectorPresenter::erasingPresenter() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    return d->erasingPresenter;
}

int ZkAIErasingCropSelectorPresenter::addCropRect(const QRect &pixelRect)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    IZkSmartKeyingService *const service = d->service();
    if (pixelRect.isEmpty() || !service)
        return -1;
    if (service->addArea(d->toNormalized(pixelRect)) < 0)
        return -1;
    const int cropId = service->areaCount() - 1; // the service appends
    setActiveCropId(cropId);
    emit sigCropRectAdded(cropId, pixelRect);
    d->updatePlayer();
    return cropId;
}

bool ZkAIErasingCropSelectorPresenter::removeCropRect(int cropId)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    IZkSmartKeyingService *const service = d->service();
    if (!service)
        return false;
    const qint64 serviceId = d->serviceIdToRemove(cropId);
    if (serviceId < 0)
        return false;
    if (!service->removeArea(serviceId)) {
        ZK_CROP_LOG("removeCropRect",
                    "ZkAIErasingCropSelectorPresenter::removeCropRect: "
                    "Failed to remove crop %d with service ID %lld",
                    cropId,
                    serviceId);
        return false;
    }
    d->renumberActiveCrop(cropId);
    d->updatePlayer();
    return true;
}

bool ZkAIErasingCropSelectorPresenter::updateCropRect(int cropId, const QRect &pixelRect)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    IZkSmartKeyingService *const service = d->service();
    if (pixelRect.isEmpty() || !service)
        return false;
    const qint64 serviceId = d->serviceIdToUpdate(cropId);
    if (serviceId < 0)
        return false;
    const bool updated = service->updateArea(serviceId, d->toNormalized(pixelRect));
    if (updated) {
        setActiveCropId(cropId);
        emit sigCropRectUpdated(cropId, pixelRect);
    }
    d->updatePlayer();
    return updated;
}

void ZkAIErasingCropSelectorPresenter::clearAllCropRects()
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    IZkSmartKeyingService *const service = d->service();
    if (!service)
        return;
    const QVector<qint64> serviceIds = d->serviceIdsToClear();
    for (const qint64 serviceId : serviceIds) {
        if (!service->removeArea(serviceId)) {
            ZK_CROP_LOG("clearAllCropRects",
                        "ZkAIErasingCropSelectorPresenter::clearAllCropRects: "
                        "Failed to remove service ID %lld",
                        serviceId);
        }
    }
    d->activeCropId = -1;
    const int remaining = service->areaCount();
    if (remaining > 0) {
        ZK_CROP_LOG("clearAllCropRects",
                    "ZkAIErasingCropSelectorPresenter::clearAllCropRects: "
                    "Warning - %d areas still remain in service after clear",
                    remaining);
    }
    emit sigAllCropRectsCleared();
    d->updatePlayer();
}

int ZkAIErasingCropSelectorPresenter::getActiveCropId() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    return d->activeCropId;
}

void ZkAIErasingCropSelectorPresenter::setActiveCropId(int cropId)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    if (cropId == d->activeCropId) {
        d->keepActiveFrame();
        return;
    }
    if (cropId != -1) {
        const IZkSmartKeyingService *const service = d->service();
        if (!service || service->areaRect(cropId).isEmpty())
            return;
    }
    d->activeCropId = cropId;
    d->keepActiveFrame();
    emit sigCropActivationChanged(cropId);
}

bool ZkAIErasingCropSelectorPresenter::isCropBackgroundOnlyMode() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    return d->backgroundOnlyMode;
}

void ZkAIErasingCropSelectorPresenter::setCropBackgroundOnlyMode(bool on)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    if (d->backgroundOnlyMode == on)
        return;
    if (on)
        d->savedActiveCropId = d->activeCropId;
    else
        d->activeCropId = d->savedActiveCropId;
    d->backgroundOnlyMode = on;
    emit sigCropDisplayModeChanged(on);
    emit sigResyncAllCropRects();
}

void ZkAIErasingCropSelectorPresenter::setPlayerRenderAllCropMasks(bool masks, bool outlines)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    IZkSmartKeyingService *const service = d->service();
    if (!service)
        return;
    service->setRenderAllAreaMasks(masks, outlines);
    d->updatePlayer();
}

void ZkAIErasingCropSelectorPresenter::onCropMoveStarted(int cropId,
                                                         ZkMultiCropWidget::OperationType type,
                                                         const QRect &)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    if (!d->erasingPresenter)
        return;
    const bool moves = type == ZkMultiCropWidget::MoveOperation;
    const QString text = (moves ? tr("Move Crop %1") : tr("Resize Crop %1")).arg(cropId);
    d->dragFlag(type) = true;
    d->erasingPresenter->beginMacro(text);
}

void ZkAIErasingCropSelectorPresenter::onCropMoving(int,
                                                    ZkMultiCropWidget::OperationType,
                                                    const QRect &)
{ }

// A drag that never comes to the service leaves its macro open: the history closes it before its next
// undo, redo or clearing.
void ZkAIErasingCropSelectorPresenter::onCropMoveFinished(int cropId,
                                                          ZkMultiCropWidget::OperationType type,
                                                          const QRect &pixelRect)
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    d->dragFlag(type) = false;
    IZkSmartKeyingService *const service = d->service();
    if (!service)
        return;
    const qint64 serviceId = d->serviceIdToFinish(cropId);
    if (serviceId < 0)
        return;
    if (service->updateArea(serviceId, d->toNormalized(pixelRect))) {
        emit sigCropRectUpdated(cropId, pixelRect);
    } else {
        ZK_CROP_LOG("onCropMoveFinished",
                    "ZkAIErasingCropSelectorPresenter::onCropMoveFinished: "
                    "Failed to update crop %d (index %d, serviceId %lld)",
                    cropId,
                    cropId,
                    serviceId);
    }
    d->erasingPresenter->endMacro();
}

void ZkAIErasingCropSelectorPresenter::syncWithServiceData()
{
    emit sigResyncAllCropRects();
}

void ZkAIErasingCropSelectorPresenter::triggerInitialCanvasRectSync()
{
    Q_D(ZkAIErasingCropSelectorPresenter);
    d->syncCanvasRect();
}
