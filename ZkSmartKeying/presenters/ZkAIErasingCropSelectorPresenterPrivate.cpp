#include "ZkAIErasingCropSelectorPresenter_p.h"

#include "ZkMediaPlayer.h"

ZkAIErasingCropSelectorPresenterPrivate::ZkAIErasingCropSelectorPresenterPrivate(
    ZkAIErasingCropSelectorPresenter *presenter, ZkAIErasingPresenter *erasing)
    : q(presenter)
    , erasingPresenter(erasing)
{ }

void ZkAIErasingCropSelectorPresenterPrivate::connectErasingPresenter()
{
    using Base = ZkSmartKeyingPresenter;
    const auto sync = [this] { syncCanvasRect(); };
    QObject::connect(erasingPresenter, &Base::sigFrameZoomed, q, sync);
    QObject::connect(erasingPresenter, &Base::sigFrameMoved, q, sync);
    const auto resync = [this] { emit q->sigResyncAllCropRects(); };
    QObject::connect(erasingPresenter, &Base::sigAIRemoveSelectAreaAdd, q, resync);
    QObject::connect(erasingPresenter, &Base::sigAIRemoveSelectAreaRemove, q, resync);
    QObject::connect(
        erasingPresenter, &Base::sigAIRemoveSelectAreaUpdate, q, [this] { followAreaUpdate(); });
    QObject::connect(erasingPresenter, &Base::sigUndoRedoChanged, q, resync);
    // Areas are the same in every edit mode: the mode is looked at, nothing follows from it.
    QObject::connect(erasingPresenter, &Base::sigPlayerEditModeChanged, q, [this] {
        Q_UNUSED(erasingPresenter->playerEditMode());
    });
}

// The crop that is dragged is ahead of the service. A notice on another frame than the active crop's is
// that frame's list of areas, in which its number means another area or none.
void ZkAIErasingCropSelectorPresenterPrivate::followAreaUpdate()
{
    if (moving || resizing)
        return;
    if (erasingPresenter->currentFrame() != activeFrame)
        q->setActiveCropId(-1);
    emit q->sigResyncAllCropRects();
}

// Also when the same number is made active again: undone on one frame, it may come back on another.
void ZkAIErasingCropSelectorPresenterPrivate::keepActiveFrame()
{
    if (erasingPresenter)
        activeFrame = erasingPresenter->currentFrame();
}

void ZkAIErasingCropSelectorPresenterPrivate::syncCanvasRect()
{
    const ZkMediaPlayerPresenter *const player =
        erasingPresenter ? erasingPresenter->playerPresenter() : nullptr;
    if (!player)
        return;
    const QRect rect = player->zoomer()->frameRect().toRect();
    if (rect == canvasRect || rect.size().isEmpty())
        return;
    canvasRect = rect;
    emit q->sigCanvasRectChanged(rect);
}

IZkSmartKeyingService *ZkAIErasingCropSelectorPresenterPrivate::service() const
{
    return erasingPresenter ? erasingPresenter->smartKeyingService() : nullptr;
}

void ZkAIErasingCropSelectorPresenterPrivate::updatePlayer() const
{
    if (ZkMediaPlayerPresenter *const player = erasingPresenter->playerPresenter())
        player->update();
}

int ZkAIErasingCropSelectorPresenterPrivate::lookUp(int number) const
{
    const IZkSmartKeyingService *const areas = service();
    const bool inRange = number >= 0 && number < areas->areaCount();
    return inRange && !areas->areaRectAt(number).isEmpty() ? number : -1;
}

qint64 ZkAIErasingCropSelectorPresenterPrivate::serviceIdOf(const QRectF &normalized) const
{
    const QPointF centre = normalized.center();
    return service()->findAreaIdAt(centre.x(), centre.y());
}

QRectF ZkAIErasingCropSelectorPresenterPrivate::toNormalized(const QRect &pixels) const
{
    if (canvasRect.size().isEmpty())
        return QRectF();
    const qreal width = canvasRect.width();
    const qreal height = canvasRect.height();
    const QRect rect = pixels.translated(-canvasRect.topLeft());
    return QRectF(
        rect.x() / width, rect.y() / height, rect.width() / width, rect.height() / height);
}

// Cut, not rounded: a crop never reaches into a pixel that its area does not fill.
QRect ZkAIErasingCropSelectorPresenterPrivate::toPixels(const QRectF &normalized) const
{
    if (canvasRect.size().isEmpty())
        return QRect();
    const int width = canvasRect.width();
    const int height = canvasRect.height();
    const QRect rect(static_cast<int>(normalized.x() * width),
                     static_cast<int>(normalized.y() * height),
                     static_cast<int>(normalized.width() * width),
                     static_cast<int>(normalized.height() * height));
    return rect.translated(canvasRect.topLeft());
}

qint64 ZkAIErasingCropSelectorPresenterPrivate::serviceIdToRemove(int cropId) const
{
    const int count = service()->areaCount();
    if (cropId < 0 || cropId >= count) {
        ZK_CROP_LOG("removeCropRect",
                    "ZkAIErasingCropSelectorPresenter::removeCropRect: "
                    "Invalid crop ID %d, count is %d",
                    cropId,
                    count);
        return -1;
    }
    const QRectF rect = service()->areaRectAt(cropId);
    if (rect.isEmpty()) {
        ZK_CROP_LOG("removeCropRect",
                    "ZkAIErasingCropSelectorPresenter::removeCropRect: Empty rect at crop ID %d",
                    cropId);
        return -1;
    }
    const qint64 serviceId = serviceIdOf(rect);
    if (serviceId < 0) {
        ZK_CROP_LOG("removeCropRect",
                    "ZkAIErasingCropSelectorPresenter::removeCropRect: "
                    "Could not find service ID for crop %d (rect: %f,%f,%fx%f)",
                    cropId,
                    rect.x(),
                    rect.y(),
                    rect.width(),
                    rect.height());
    }
    return serviceId;
}

qint64 ZkAIErasingCropSelectorPresenterPrivate::serviceIdToUpdate(int cropId) const
{
    const int index = lookUp(cropId);
    if (index < 0) {
        ZK_CROP_LOG("updateCropRect",
                    "ZkAIErasingCropSelectorPresenter::updateCropRect: Invalid crop ID %d",
                    cropId);
        return -1;
    }
    const QRectF rect = service()->areaRectAt(index);
    if (rect.isEmpty()) {
        ZK_CROP_LOG("updateCropRect",
                    "ZkAIErasingCropSelectorPresenter::updateCropRect: "
                    "Empty rect at index %d for crop ID %d",
                    index,
                    cropId);
        return -1;
    }
    const qint64 serviceId = serviceIdOf(rect);
    if (serviceId < 0) {
        ZK_CROP_LOG("updateCropRect",
                    "ZkAIErasingCropSelectorPresenter::updateCropRect: "
                    "No service ID found at center (%.2f, %.2f) for crop ID %d",
                    rect.center().x(),
                    rect.center().y(),
                    cropId);
    }
    return serviceId;
}

qint64 ZkAIErasingCropSelectorPresenterPrivate::serviceIdToFinish(int cropId) const
{
    const int index = lookUp(cropId);
    if (index < 0) {
        ZK_CROP_LOG("onCropMoveFinished",
                    "ZkAIErasingCropSelectorPresenter::onCropMoveFinished: "
                    "Invalid crop ID %d, cannot find index",
                    cropId);
        return -1;
    }
    const QRectF rect = service()->areaRectAt(index);
    if (rect.isEmpty()) {
        ZK_CROP_LOG("onCropMoveFinished",
                    "ZkAIErasingCropSelectorPresenter::onCropMoveFinished: "
                    "Empty rect at index %d for crop ID %d",
                    index,
                    cropId);
        return -1;
    }
    const qint64 serviceId = serviceIdOf(rect);
    if (serviceId < 0) {
        ZK_CROP_LOG("onCropMoveFinished",
                    "ZkAIErasingCropSelectorPresenter::onCropMoveFinished: "
                    "Cannot find serviceId for crop %d at index %d",
                    cropId,
                    index);
    }
    return serviceId;
}

// All of them before the first is removed, which renumbers those behind it.
QVector<qint64> ZkAIErasingCropSelectorPresenterPrivate::serviceIdsToClear() const
{
    QVector<qint64> ids;
    const int count = service()->areaCount();
    ids.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QRectF rect = service()->areaRectAt(i);
        const qint64 serviceId = rect.isEmpty() ? -1 : serviceIdOf(rect);
        if (serviceId >= 0)
            ids.append(serviceId);
    }
    return ids;
}

void ZkAIErasingCropSelectorPresenterPrivate::renumberActiveCrop(int removedId)
{
    if (activeCropId < removedId)
        return;
    activeCropId = activeCropId == removedId ? -1 : activeCropId - 1;
    emit q->sigCropActivationChanged(activeCropId);
}

bool &ZkAIErasingCropSelectorPresenterPrivate::dragFlag(ZkMultiCropWidget::OperationType type)
{
    return type == ZkMultiCropWidget::MoveOperation ? moving : resizing;
}
