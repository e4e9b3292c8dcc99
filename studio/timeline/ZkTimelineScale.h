#pragma once

#include "ZkGlobal.h"

namespace zk::timeline {

// Where the frames of a timeline lie on a view of some width. Every frame has a cell of the same width;
// a frame's mark stands in the middle of its cell. Lengths are in widget pixels, x counts from the left
// edge of the view.
//
// While it is fitted it stays so, whatever the width becomes.
class ZKTIMELINEVIEW_EXPORT TimelineScale
{
public:
    // Kept free beside the first and the last frame, so that their marks are not cut off.
    static constexpr double sideMargin = 14;
    static constexpr double closest = 80; // pixels per frame, unless fitting needs more

    qint64 frameCount() const { return m_frameCount; }
    // Fits them.
    void setFrameCount(qint64 count);
    double width() const { return m_width; }
    void setWidth(double width);

    double pixelsPerFrame() const { return m_pixelsPerFrame; }
    bool isFitted() const { return m_isFitted; }
    void fit();
    // What lies at the anchor stays there as far as the ends allow it.
    void zoomTo(double pixelsPerFrame, double anchorX);
    // 0 (fitted) to 100 (closest), in equal ratios; always 0 when fitted is as close as it gets.
    int zoomValue() const;
    void setZoomValue(int value, double anchorX);

    // What is out of sight on the left.
    double offset() const { return m_offset; }
    double maximumOffset() const;
    void setOffset(double offset);

    // The nearest frame there is.
    qint64 frameAt(double x) const;
    double leftOf(qint64 frame) const; // of its cell
    double centreOf(qint64 frame) const { return leftOf(frame) + m_pixelsPerFrame / 2; }
    bool isVisible(qint64 frame) const;

private:
    double fittedScale() const;
    double closestScale() const;

    qint64 m_frameCount = 0;
    double m_width = 0;
    double m_pixelsPerFrame = 1;
    double m_offset = 0;
    bool m_isFitted = true;
};

} // namespace zk::timeline
