// The rectangles over the player of an AI erasing workspace; not public.
#pragma once

#include "ZkWidgets.h"

#include <QMap>
#include <QPoint>

class ZkAIErasingCropSelectorPresenter;
class ZkAIErasingPresenter;
class ZkMediaPlayerWidget;

// Covers the player exactly. What the user does to the rectangles goes to the presenter of the areas,
// and the rectangles are built anew whenever the areas have changed. Middle button, wheel and pinch go
// on to the player.
//
// Between two rebuilds the editor's ids and the crop ids may differ, so both ways are kept. A
// disagreement is logged, and the next rebuild heals it.
//
// The presenter is not owned and must outlive it.
class ZkAIErasingCropOverlayWidget : public ZkPlayerOverlayWidget
{
    Q_OBJECT

public:
    ZkAIErasingCropOverlayWidget(ZkAIErasingPresenter *presenter,
                                 QWidget *playerWidget,
                                 QWidget *parent);
    ~ZkAIErasingCropOverlayWidget() override;

    ZkMultiCropWidget *editor() const { return m_editor; }
    // After one crop came or went. Raises none of the editor's signals, like resyncAllCropRects().
    void syncUIFromBusinessData();
    // Processes events while it builds.
    void resyncAllCropRects();
    // Shows a crop as the one under the mouse, on behalf of another view.
    void setHoverCropId(int cropId);
    void clearHover();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void applyStyle();
    void connectSignals();
    void connectEditor();
    void connectDrag();
    void connectPresenter();
    void followPlayerGeometry();

    void addCrop(int uiId, const QRect &rect);
    void removeCrop(int uiId);
    void healRemoval(int uiId, int crop);
    void activateCrop(int uiId);
    void clearCrops();

    ZkAIErasingCropSelectorPresenter *crops() const; // null when there is none
    int dataId(int uiId) const; // -1: unmapped
    // The same, with a log line that names what went wrong.
    int dataIdToDrag(int uiId, ZkMultiCropWidget::OperationType type, const char *step) const;
    QRect editorRect(int uiId) const;
    void clearMaps();
    void fillMaps(const QList<int> &ids);
    void rebuild(const QList<QRect> &rects, const QList<int> &ids, int activeId);
    void rebuildWithoutIds(const QList<QRect> &rects, const QList<int> &ids);
    void resync(const QList<QRect> &rects, const QList<int> &ids, int activeId);
    void reportDifferences(const QList<QRect> &rects) const;

    void moveMouse(const QPointF &position);
    QPoint pointerPosition() const; // in the editor's pixels
    bool hoverAt(const QPoint &position); // false when that is beside the editor
    ZkMediaPlayerWidget *player() const;
    void sendToPlayer(QEvent *event);
    void beginPan(QMouseEvent *event);
    void endPan(QMouseEvent *event);
    void updateDragCursor();

    ZkAIErasingPresenter *m_presenter;
    ZkMultiCropWidget *m_editor = nullptr;
    QMap<int, int> m_uiToData;
    QMap<int, int> m_dataToUi;
    QPoint m_panStart; // null while no pan runs
    bool m_isPanning = false; // with the middle button
    int m_rebuilds = 0; // tells a rebuild that another one came in between
};
