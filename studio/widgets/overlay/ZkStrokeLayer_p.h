// Not public. A picture that a stroke is drawn into.
#pragma once

#include <QImage>
#include <QLineF>
#include <QPen>
#include <QRect>
#include <QTransform>

namespace zk::widgets {

// Where a stroke covers itself it stays as opaque as its pen: a pixel takes the most opaque of what is
// drawn on it, not the sum. So it does not matter in how many lines the stroke came.
//
// Memory is taken only for the pixels that are drawn on, where the system gives out zeroed memory on
// first use.
class StrokeLayer
{
public:
    // Draws nothing.
    StrokeLayer() = default;
    // Only the pixels inside the clip are drawn on.
    StrokeLayer(const QSize &size, const QTransform &strokeToPixels, const QRect &clip);

    // The line in the stroke's coordinates, a dot when it has no length. All lines of a layer have the
    // same pen. Returns the pixels that may have changed.
    QRect draw(const QPen &pen, const QLineF &line);
    // Whether nothing of the stroke has hit the layer.
    bool isBlank() const { return m_isBlank; }
    // Format_ARGB32_Premultiplied.
    const QImage &image() const { return m_image; }
    void setDevicePixelRatio(qreal ratio) { m_image.setDevicePixelRatio(ratio); }

private:
    QRect drawPiece(const QPen &pen, const QLineF &piece);
    void prepareScratch(const QSize &size);
    void merge(const QRect &area);

    QImage m_image;
    QTransform m_strokeToPixels;
    QRect m_clip;
    QImage m_scratch; // of one piece, at its top left
    bool m_isBlank = true;
};

} // namespace zk::widgets
