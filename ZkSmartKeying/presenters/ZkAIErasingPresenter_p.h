// Not public: the state of ZkAIErasingPresenter. It may change at any time.
#pragma once

#include "ZkAIErasingCropSelectorPresenter.h"
#include "ZkAIErasingPresenter.h"

#include "ZkDataModel.h"

#include <QPair>
#include <QVector>

#include <memory>

class ZkAIErasingPresenterPrivate final
{
public:
    explicit ZkAIErasingPresenterPrivate(ZkAIErasingPresenter *presenter);

    void sendUseEvent();
    void followPlayerState(int state);

    // The service must exist.
    void clearTracking();
    void removeSegmentNodes();

    void takeSnapshot();
    void restoreSnapshot();
    // What the step of a save does.
    void redoTracking();
    void undoTracking();

    ZkAIErasingPresenter *q;
    int erasingSegmentCount = 0;
    qint64 trackingDuration = 0; // ms
    bool hasTracked = false;
    // Nodes with their results, as the last save or discard found them.
    QVector<QPair<qint64, ZkSegmentResultPtr>> trackingSnapshot;
    std::unique_ptr<ZkAIErasingCropSelectorPresenter> cropSelectorPresenter;

private:
    Q_DISABLE_COPY(ZkAIErasingPresenterPrivate)
};
