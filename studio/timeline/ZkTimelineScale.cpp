#include "ZkTimelineScale.h"

#include <algorithm>
#include <cmath>

namespace zk::timeline {

namespace {

constexpr double justAboveFitted = 1.0001; // a wheel that comes back does not meet it exactly
constexpr int closestValue = 100;

} // namespace

void TimelineScale::setFrameCount(qint64 count)
{
    m_frameCount = std::max<qint64>(0, count);
    fit();
}

void TimelineScale::setWidth(double width)
{
    m_width = std::max(0.0, width);
    if (m_isFitted)
        fit();
    else
        zoomTo(m_pixelsPerFrame, 0);
}

double TimelineScale::fittedScale() const
{
    const double room = m_width - 2 * sideMargin;
    return m_frameCount > 0 && room > 0 ? room / double(m_frameCount) : 1;
}

double TimelineScale::closestScale() const
{
    return std::max(closest, fittedScale());
}

void TimelineScale::fit()
{
    m_isFitted = true;
    m_pixelsPerFrame = fittedScale();
    m_offset = 0;
}

void TimelineScale::zoomTo(double pixelsPerFrame, double anchorX)
{
    if (pixelsPerFrame <= fittedScale() * justAboveFitted) {
        fit();
        return;
    }
    const double anchor = (anchorX + m_offset - sideMargin) / m_pixelsPerFrame; // frames
    m_isFitted = false;
    m_pixelsPerFrame = std::min(pixelsPerFrame, closestScale());
    setOffset(anchor * m_pixelsPerFrame + sideMargin - anchorX);
}

int TimelineScale::zoomValue() const
{
    const double range = std::log(closestScale() / fittedScale());
    if (m_isFitted || range <= 0)
        return 0;
    return int(std::lround(closestValue * std::log(m_pixelsPerFrame / fittedScale()) / range));
}

void TimelineScale::setZoomValue(int value, double anchorX)
{
    const double part = double(qBound(0, value, closestValue)) / closestValue;
    zoomTo(fittedScale() * std::pow(closestScale() / fittedScale(), part), anchorX);
}

double TimelineScale::maximumOffset() const
{
    return std::max(0.0, double(m_frameCount) * m_pixelsPerFrame + 2 * sideMargin - m_width);
}

void TimelineScale::setOffset(double offset)
{
    m_offset = m_isFitted ? 0 : qBound(0.0, offset, maximumOffset());
}

qint64 TimelineScale::frameAt(double x) const
{
    const auto frame = qint64(std::floor((x + m_offset - sideMargin) / m_pixelsPerFrame));
    return qBound<qint64>(0, frame, std::max<qint64>(0, m_frameCount - 1));
}

double TimelineScale::leftOf(qint64 frame) const
{
    return sideMargin + double(frame) * m_pixelsPerFrame - m_offset;
}

bool TimelineScale::isVisible(qint64 frame) const
{
    const double x = centreOf(frame);
    return x >= 0 && x <= m_width;
}

} // namespace zk::timeline
