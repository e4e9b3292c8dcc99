// Painting with a round brush: the cursor and the canvas.
#pragma once

#include "../ZkGlobal.h"

#include <QColor>
#include <QCursor>
#include <QImage>
#include <QRect>
#include <QSize>
#include <QWidget>

#include <memory>

// The round brush cursor.
class ZKWIDGETS_EXPORT ZkDrawingCursor
{
public:
    // A circle of that diameter in widget pixels, at least 2, with its hot spot in the middle. The
    // pressed form is filled with the colour as it stands, the normal form shows the outline with a
    // light fill. The pixmap has the device pixel ratio of the primary screen.
    static QCursor cursor(int diameter, const QColor &color, bool pressed);
};

// A transparent canvas on which the left button draws strokes with a round pen. A stroke is clipped to
// the canvas rectangle, disappears when it ends and is handed over as a picture.
class ZKWIDGETS_EXPORT ZkDrawingWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ZkDrawingWidget(QWidget *parent = nullptr);
    ~ZkDrawingWidget() override;

    QColor penColor() const;
    // Of the next stroke. An invalid colour draws nothing.
    void setPenColor(const QColor &color);
    int penWidth() const;
    // Diameter of the next stroke in widget pixels, at least 1.
    void setPenWidth(int width);
    QRect canvasRect() const;
    // Where one may draw, in widget pixels; may be larger than the widget. A change in the middle of a
    // stroke carries the stroke along with the canvas.
    void setCanvasRect(const QRect &rect);
    // Bounds the picture that is handed over: normally the size of the source that the canvas shows. An
    // empty size (the default): the canvas rectangle in device pixels is the only bound.
    void setMaximumImageSize(const QSize &size);
    bool isDrawing() const;

    void setVisible(bool visible) override;

Q_SIGNALS:
    // A stroke has ended. The mask (Format_ARGB32_Premultiplied, transparent but for the stroke in the
    // pen's colour) shows exactly the canvas rectangle. Not finished, with a null mask, when the stroke
    // was cancelled: by Esc, or because the widget was hidden or disabled in the middle of it. A
    // click without a move is a stroke of one dot; one that paints nothing of the canvas is not
    // reported.
    void sigDrawingFinished(const QImage &mask, bool finished);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
