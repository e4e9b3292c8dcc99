// Not public: the state of the editor of rectangles.
#pragma once

#include "ZkCropGeometry_p.h"

#include <QPainter>
#include <QPointer>
#include <QVector>

class ZkMultiCropWidget::Private
{
public:
    using Operation = ZkMultiCropWidget::OperationType;

    struct Crop
    {
        QRect rect;
        int id = -1; // as the list's owner numbers it; -1: it has not said
    };

    // What the mouse does with the left button down.
    struct Drag
    {
        bool isOn = false;
        bool draws = false; // a new one
        bool hasStarted = false; // it has moved and was reported
        Operation type = MoveOperation;
        int index = -1; // -1: its rectangle has gone, at least until the list is filled again
        int id = -1;
        QRect start;
        QPoint press;
        QPoint position;
    };

    explicit Private(ZkMultiCropWidget *widget)
        : q(widget)
    { }

    bool canEdit() const { return !isBackgroundOnly && q->isEnabled(); }
    bool ownsKey(const QKeyEvent *event) const;
    bool takeKey(const QKeyEvent *event);

    void replace(const QVector<Crop> &list, int activeIndex);
    void takeFocus();
    void press(const QPoint &position);
    void beginDrag(int index, Operation type, const QPoint &position);
    void continueDrag(const QPoint &position);
    void endDrag();
    void cancelDrag();
    void activate(int index);
    void remove(int index);
    void hover(const QPoint &position);

    void paint(QPainter &painter) const;

    ZkMultiCropWidget *q;
    QVector<Crop> crops;
    QRect canvas;
    ZkMultiCropStyle style;
    Drag drag;
    QPointer<QWidget> keySource;
    QString name; // for screen readers
    int active = -1;
    int hovered = -1;
    bool isBackgroundOnly = false;
    bool isCloseHovered = false;
    bool isClosePressed = false;

private:
    struct Hit
    {
        int index = -1;
        Operation type = MoveOperation;
    };

    Hit hitAt(const QPoint &position) const;
    QRect closeButton() const;
    QRect rubberBand() const { return zk::widgets::drawnCrop(drag.press, drag.position, canvas); }
    void carryDragAlong();
    void finishDrawing();
    void stopDrag();
    void step(const QPoint &by);
    void activateNext(int direction);

    bool hasKeys() const;
    void paintCrop(QPainter &painter, int index) const;
    void paintHandles(QPainter &painter, const QRect &rect) const;
    void paintClose(QPainter &painter) const;
    ZKWIDGET::ZkCropState handleState() const;
};
