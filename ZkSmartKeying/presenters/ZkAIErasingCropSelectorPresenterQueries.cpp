// What the presenter of the areas answers; every answer comes from the service.

#include "ZkAIErasingCropSelectorPresenter_p.h"

bool ZkAIErasingCropSelectorPresenter::hasCropRects() const
{
    return getCropCount() > 0;
}

int ZkAIErasingCropSelectorPresenter::getCropCount() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    const IZkSmartKeyingService *const service = d->service();
    return service ? service->areaCount() : 0;
}

bool ZkAIErasingCropSelectorPresenter::containsCropRect(int cropId) const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    return d->service() && d->lookUp(cropId) >= 0;
}

QList<int> ZkAIErasingCropSelectorPresenter::getAllCropIds() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    QList<int> ids;
    const IZkSmartKeyingService *const service = d->service();
    const int count = getCropCount();
    ids.reserve(count);
    for (int i = 0; i < count; ++i) {
        if (service->areaRectAt(i).isEmpty())
            continue;
        const int cropId = d->lookUp(i);
        if (cropId >= 0) {
            ids.append(cropId);
        } else {
            ZK_CROP_LOG("getAllCropIds",
                        "ZkAIErasingCropSelectorPresenter::getAllCropIds: "
                        "No cropId found for index %d",
                        i);
        }
    }
    return ids;
}

QList<QRect> ZkAIErasingCropSelectorPresenter::getAllCropRects() const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    QList<QRect> rects;
    const IZkSmartKeyingService *const service = d->service();
    const int count = getCropCount();
    rects.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QRectF rect = service->areaRectAt(i);
        if (rect.isEmpty()) {
            ZK_CROP_LOG("getAllCropRects",
                        "ZkAIErasingCropSelectorPresenter::getAllCropRects: Empty rect at index %d",
                        i);
            continue;
        }
        rects.append(d->toPixels(rect));
    }
    return rects;
}

QRect ZkAIErasingCropSelectorPresenter::getCropRect(int cropId) const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    const IZkSmartKeyingService *const service = d->service();
    if (!service)
        return QRect();
    const int index = d->lookUp(cropId);
    if (index < 0) {
        ZK_CROP_LOG("getCropRect",
                    "ZkAIErasingCropSelectorPresenter::getCropRect: No index found for crop ID %d",
                    cropId);
        return QRect();
    }
    const QRectF rect = service->areaRectAt(index);
    if (rect.isEmpty()) {
        ZK_CROP_LOG("getCropRect",
                    "ZkAIErasingCropSelectorPresenter::getCropRect: "
                    "Empty rect at index %d for crop ID %d",
                    index,
                    cropId);
        return QRect();
    }
    return d->toPixels(rect);
}

QRectF ZkAIErasingCropSelectorPresenter::getNormalizedCropRect(int cropId) const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    const IZkSmartKeyingService *const service = d->service();
    if (!service)
        return QRectF();
    const int index = d->lookUp(cropId);
    if (index < 0) {
        ZK_CROP_LOG("getNormalizedCropRect",
                    "ZkAIErasingCropSelectorPresenter::getNormalizedCropRect: "
                    "No index found for crop ID %d",
                    cropId);
        return QRectF();
    }
    const QRectF rect = service->areaRectAt(index);
    if (rect.isEmpty()) {
        ZK_CROP_LOG("getNormalizedCropRect",
                    "ZkAIErasingCropSelectorPresenter::getNormalizedCropRect: "
                    "Empty rect at index %d for crop ID %d",
                    index,
                    cropId);
        return QRectF();
    }
    return rect;
}

int ZkAIErasingCropSelectorPresenter::getCropIdAtPixelPosition(int x, int y) const
{
    Q_D(const ZkAIErasingCropSelectorPresenter);
    const IZkSmartKeyingService *const service = d->service();
    if (!service)
        return -1;
    const QPointF point = d->toNormalized(QRect(x, y, 1, 1)).topLeft();
    const int count = service->areaCount();
    for (int i = 0; i < count; ++i) {
        const QRectF rect = service->areaRectAt(i);
        if (!rect.isEmpty() && rect.contains(point))
            return d->lookUp(i);
    }
    return -1;
}
