// Not public: the state of ZkAIErasingCropSelectorPresenter. It may change at any time.
#pragma once

#include "ZkAIErasingCropSelectorPresenter.h"
#include "ZkAIErasingPresenter.h"

#include "../ZkSmartKeyingLog.h"

#include "ZkDataModel.h"

// What failed, printf-style.
#define ZK_CROP_LOG(function, ...)                                                                 \
    ZK_LOG(ZKLOG::Warning,                                                                         \
           "ZkAIErasingCropSelectorPresenter",                                                     \
           function,                                                                               \
           QString::asprintf(__VA_ARGS__))

class ZkAIErasingCropSelectorPresenterPrivate final
{
public:
    ZkAIErasingCropSelectorPresenterPrivate(ZkAIErasingCropSelectorPresenter *presenter,
                                            ZkAIErasingPresenter *erasing);

    void connectErasingPresenter();
    void followAreaUpdate();
    void keepActiveFrame();
    void syncCanvasRect();

    IZkSmartKeyingService *service() const; // null without an erasing presenter too
    void updatePlayer() const;
    // Crop ids are indices, so that the number itself is the answer either way; -1 when there is no
    // area of that number. The service must exist.
    int lookUp(int number) const;
    // The service's id of the area with that rectangle, negative for none. The service must exist.
    qint64 serviceIdOf(const QRectF &normalized) const;
    QRectF toNormalized(const QRect &pixels) const;
    QRect toPixels(const QRectF &normalized) const;

    // Steps of the operations that they are named after; negative on failure, which they log.
    qint64 serviceIdToRemove(int cropId) const;
    qint64 serviceIdToUpdate(int cropId) const;
    qint64 serviceIdToFinish(int cropId) const;
    QVector<qint64> serviceIdsToClear() const;
    void renumberActiveCrop(int removedId);
    bool &dragFlag(ZkMultiCropWidget::OperationType type);

    ZkAIErasingCropSelectorPresenter *q;
    ZkAIErasingPresenter *erasingPresenter;
    QRect canvasRect {0, 0, 1920, 1080}; // where the frame lies, in widget pixels
    int activeCropId = -1;
    bool moving = false;
    bool resizing = false;
    bool backgroundOnlyMode = false;
    int savedActiveCropId = -1; // when the background-only mode was entered
    qint64 activeFrame = -1; // the frame whose areas the active crop belongs to

private:
    Q_DISABLE_COPY(ZkAIErasingCropSelectorPresenterPrivate)
};
