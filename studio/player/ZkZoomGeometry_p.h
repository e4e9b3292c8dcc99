// Not public. Where the frame lies on the player.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>

namespace zk::player {

// Size and place of the frame for a level, a view port and a pan offset. A value: it reports nothing.
// Lengths are widget pixels, levels are widget pixels per source pixel.
//
// An edge that is shorter than the view port's is centred; a longer one always covers the view port.
// What is kept is the source point in the middle of the view port, so that neither resizing nor
// zooming adds up rounding errors.
class ZoomGeometry
{
public:
    // An empty size: there is no frame.
    void setSourceSize(const QSize &size) { m_source = size; }
    QSize sourceSize() const { return m_source; }
    // An empty size: the view port is as large as the source.
    void setViewport(const QSizeF &size) { m_viewport = size; }
    QSizeF viewport() const;

    // 0 fits the whole frame. Other levels are limited to the table of levels, or to the fitted level
    // where that lies outside of it. The source point under the anchor stays under it as far as the
    // frame still covers or is centred; a null anchor means the middle of the view port.
    void setLevel(float level, const QPointF &anchor);
    // 0 while fitted.
    float level() const { return m_level; }
    float effectiveLevel() const;
    float fittedLevel() const;
    // The level so many entries further in the table, never beyond its ends.
    float nextLevel(int step) const;

    // Null while there is no frame.
    QRectF frameRect() const;
    // Not snapped.
    QPointF topLeft() const;
    void moveTo(const QPointF &topLeft);
    bool canPan() const;

private:
    QSizeF frameSize() const;

    QSize m_source;
    QSizeF m_viewport;
    float m_level = 0;
    QPointF m_middle {0.5, 0.5}; // in shares of the frame's width and height
};

} // namespace zk::player
