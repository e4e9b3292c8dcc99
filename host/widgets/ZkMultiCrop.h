// Rectangles on the player that the user draws, moves and resizes.
#pragma once

#include "../ZkGlobal.h"

#include <QColor>
#include <QCursor>
#include <QList>
#include <QRect>
#include <QString>
#include <QWidget>

#include <array>
#include <memory>

namespace ZKWIDGET {
enum ZkCropState {
    CropNormal = 0,
    CropHover = 1,
    CropPressed = 2,
    CropDisabled = 3,
};
}

// How a part of a rectangle looks in one state.
struct ZkCropLook
{
    QString
        image; // path of a resource; a sign of the editor's own stands in for one that is not there
    QColor background = Qt::transparent; // behind the image
    QColor border = Qt::transparent; // around it
};

// Looks of one part by ZKWIDGET::ZkCropState.
using ZkCropLooks = std::array<ZkCropLook, 4>;

struct ZkMultiCropStyle
{
    ZkCropLooks closeButton;
    ZkCropLooks topLeftHandle;
    ZkCropLooks topRightHandle;
    ZkCropLooks bottomLeftHandle;
    ZkCropLooks bottomRightHandle;
    QCursor middleButtonDragCursor = QCursor(Qt::ClosedHandCursor);

    QCursor getMiddleButtonDragCursor() const { return middleButtonDragCursor; }
};

// Edits a list of rectangles, in widget pixels, on a canvas. The left button draws one on free canvas,
// moves the one under it, resizes the active one by one of its eight handles, and removes the active one
// by its close button; of those that overlap the active one comes first, else the one with the lowest
// index. Arrow keys move the active one by a pixel, with Shift by ten; Delete removes it; Page Up and
// Page Down make the next one active; Esc cancels a drag. What ends up smaller than 4 pixels is not made.
// Rectangles stay within the canvas rectangle.
//
// A UI id is the rectangle's place in getCropRects(). Other buttons, the wheel and, in background-only
// mode, everything that comes from the mouse are left to the parent widget.
//
// Signals are the last that an operation does: whoever receives one may rebuild the list and process
// events. A rebuild in the middle of a drag carries the drag along when the dragged rectangle's id is
// still there, else it ends the drag without a signal.
class ZKWIDGETS_EXPORT ZkMultiCropWidget : public QWidget
{
    Q_OBJECT

public:
    // What a drag does to a rectangle: moves it, or resizes it by one of its eight handles.
    enum OperationType {
        MoveOperation = 0,
        ResizeTopLeft,
        ResizeTop,
        ResizeTopRight,
        ResizeRight,
        ResizeBottomRight,
        ResizeBottom,
        ResizeBottomLeft,
        ResizeLeft,
    };

    explicit ZkMultiCropWidget(QWidget *parent = nullptr);
    ~ZkMultiCropWidget() override;

    QList<QRect> getCropRects() const;
    // Without ids and with none active. None of these three reports.
    void setCropRects(const QList<QRect> &rects);
    // The rectangle whose id is activeId becomes active; -1: none. The lists must be of one length, or
    // nothing changes.
    void setCropRectsWithIds(const QList<QRect> &rects, const QList<int> &ids, int activeId);
    void clearCropRects();

    // Where rectangles may be; initially empty, which lets nothing be drawn. Changes no rectangle.
    void setCanvasRect(const QRect &rect);
    QRect canvasRect() const;
    // Shows the rectangles and lets nothing be done to them. A drag that runs is cancelled.
    void setBackgroundOnlyMode(bool on);
    bool isBackgroundOnlyMode() const;
    // The UI id of the active and of the hovered rectangle; -1 without one.
    int activeCrop() const;
    int hoveredCrop() const;
    bool isDragging() const;

    ZkMultiCropStyle getStyle() const;
    void setStyle(const ZkMultiCropStyle &style);

    // In a window that takes no focus the editor cannot have it: the keys are then those of this widget,
    // which gets the focus when the editor is pressed. Not owned, may die first; null: the editor itself.
    void setKeySource(QWidget *source);
    // Where the parts of the active rectangle are, in widget pixels; empty while none is shown.
    QRect handleRect(ZkMultiCropWidget::OperationType handle) const;
    QRect closeButtonRect() const;

Q_SIGNALS:
    // The user drew it; it is the active one.
    void sigCropCreated(int uiId, const QRect &rect);
    // The user removed what had this id; the ones behind it have moved up.
    void sigCropRemoved(int uiId);
    // The first move of a drag. A press without a move makes the rectangle active and nothing else.
    void sigCropMoveStarted(int uiId, ZkMultiCropWidget::OperationType type);
    void sigCropMoving(int uiId, ZkMultiCropWidget::OperationType type);
    // Follows every sigCropMoveStarted, unless the rectangle is gone. A cancelled drag reports the
    // rectangle that it began with.
    void sigCropMoveFinished(int uiId, ZkMultiCropWidget::OperationType type, const QRect &rect);
    // By the user; -1: a click on free canvas left none active.
    void sigCropActivated(int uiId);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
