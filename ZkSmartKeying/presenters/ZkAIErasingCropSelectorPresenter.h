// Presenter of the rectangular areas of an AI erasing workspace.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "widgets/ZkMultiCrop.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <QRectF>

#include <memory>

class ZkAIErasingCropSelectorPresenterPrivate;
class ZkAIErasingPresenter;

// Translates between the crops that the overlay shows, in widget pixels, and the areas that the
// segmentation service holds, in fractions of the frame. Keeps no list of its own: every query asks the
// service, which answers for the frame that the player shows.
//
// A crop id is the position of its area in the service's list: removing an area renumbers those behind
// it. -1 is no crop. Without an erasing presenter or a service every operation does nothing and returns
// -1, 0, false or something empty; what the service refuses changes nothing and is logged. When areas
// of another frame come up, no crop is active any more.
//
// Lives as long as its erasing presenter. GUI thread only.
class ZKSMARTKEYING_EXPORT ZkAIErasingCropSelectorPresenter : public QObject
{
    Q_OBJECT

public:
    // The erasing presenter may be null and is not owned.
    ZkAIErasingCropSelectorPresenter(ZkAIErasingPresenter *erasingPresenter,
                                     QObject *parent = nullptr);
    ~ZkAIErasingCropSelectorPresenter() override;

    ZkAIErasingPresenter *erasingPresenter() const;

    // Each is one undoable step. Adding returns the new crop's id, -1 on failure; the crop that was added
    // or updated becomes the active one.
    int addCropRect(const QRect &pixelRect);
    bool removeCropRect(int cropId);
    bool updateCropRect(int cropId, const QRect &pixelRect);
    // One undoable step per area, unless the caller has opened a macro.
    void clearAllCropRects();

    bool hasCropRects() const;
    int getCropCount() const; // empty areas included, unlike the lists
    bool containsCropRect(int cropId) const;
    QList<int> getAllCropIds() const;
    QList<QRect> getAllCropRects() const;
    QRect getCropRect(int cropId) const;
    QRectF getNormalizedCropRect(int cropId) const;
    int getCropIdAtPixelPosition(int x, int y) const; // the lowest where crops overlap

    int getActiveCropId() const;
    // Ignores an id without an area.
    void setActiveCropId(int cropId);

    // Crops are shown but not edited. Leaving the mode makes the crop active again that was so before.
    bool isCropBackgroundOnlyMode() const;
    void setCropBackgroundOnlyMode(bool on);
    void setPlayerRenderAllCropMasks(bool masks, bool outlines);

    // A drag on the overlay. Nothing reaches the service before it ends; from start to finish it is one
    // undoable step. While one is under way, changed rectangles are not reported.
    void
    onCropMoveStarted(int cropId, ZkMultiCropWidget::OperationType type, const QRect &pixelRect);
    void onCropMoving(int cropId, ZkMultiCropWidget::OperationType type, const QRect &pixelRect);
    void
    onCropMoveFinished(int cropId, ZkMultiCropWidget::OperationType type, const QRect &pixelRect);

    void syncWithServiceData();
    // Takes over where the player shows the frame, as zooming and panning do by themselves.
    void triggerInitialCanvasRectSync();

Q_SIGNALS:
    void sigCropRectAdded(int cropId, const QRect &rect); // widget pixels, as they were given
    void sigCropRectRemoved(int cropId); // emitted by the views
    void sigCropRectUpdated(int cropId, const QRect &rect); // widget pixels, as they were given
    void sigAllCropRectsCleared(); // also when some could not be removed
    // Not when all were cleared and not when the background-only mode ends.
    void sigCropActivationChanged(int cropId);
    void sigCropDisplayModeChanged(bool backgroundOnly);
    void sigResyncAllCropRects(); // whoever shows crops builds them anew
    void sigCanvasRectChanged(const QRect &rect); // widget pixels

private:
    std::unique_ptr<ZkAIErasingCropSelectorPresenterPrivate> d_ptr;
    Q_DECLARE_PRIVATE(ZkAIErasingCropSelectorPresenter)
    Q_DISABLE_COPY(ZkAIErasingCropSelectorPresenter)
};
