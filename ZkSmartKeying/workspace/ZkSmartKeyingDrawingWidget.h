// The canvas over the player; not public.
#pragma once

#include "ZkWidgets.h"

#include <QPoint>

class ZkSmartKeyingPresenter;

// Floats exactly over the player while a drawing mode is on. Strokes go to the presenter as one image
// each, once they are finished; Ctrl and a drag change the width of the pen; everything else goes on to
// the player. Keeps no state but the positions of the gesture in progress.
//
// Owned by the player widget that it is made for. The presenter is not owned.
class ZkSmartKeyingDrawingWidget : public ZkDrawingWidget
{
    Q_OBJECT

public:
    ZkSmartKeyingDrawingWidget(ZkSmartKeyingPresenter *presenter, QWidget *parent);
    ~ZkSmartKeyingDrawingWidget() override;

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void connectPresenter();
    void connectPen();
    void followPlayerGeometry();
    void followEditMode();
    void followTracking(bool tracking);
    void followEnabled(bool enabled);
    void refreshCursor();
    void takeStroke(const QImage &mask, bool finished);
    void beginPenWidthDrag(const QPoint &position);
    void dragPenWidth(const QPoint &position);
    void endPenWidthDrag();
    void endGestures();
    void sendToPlayer(QEvent *event);
    void paintBrushPreview();

    ZkSmartKeyingPresenter *m_presenter;
    ZkPlayerWidgetEventHelper *m_eventHelper = nullptr;
    QPoint m_pressPos; // where the drag of the pen width began; null: none
    QPoint m_lastPos; // of the mouse during that drag
};
