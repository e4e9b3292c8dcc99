#include "ZkZoomGeometry_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::player {

namespace {

// The steps of the wheel and of the zoom keys. It holds every level that zoom boxes offer (10, 50, 100,
// 200, 400 and 800 %) and, in between, steps of no more than 2.5 times.
constexpr std::array<float, 11> levels {
    0.1F, 0.25F, 0.5F, 0.75F, 1.0F, 1.5F, 2.0F, 3.0F, 4.0F, 6.0F, 8.0F};

// A fitted frame can stand on a level of the table but for rounding; the next step then has to be the
// entry after that one.
constexpr float sameLevel = 1.0005F;

double topLeftOfAxis(double viewport, double frame, double middle)
{
    if (frame <= viewport)
        return (viewport - frame) / 2;
    return std::clamp(viewport / 2 - middle * frame, viewport - frame, 0.0);
}

double wholePixels(double sourceLength, float level)
{
    return std::max(1.0, std::round(sourceLength * double(level)));
}

} // namespace

QSizeF ZoomGeometry::viewport() const
{
    return m_viewport.isEmpty() ? QSizeF(m_source) : m_viewport;
}

float ZoomGeometry::fittedLevel() const
{
    const QSizeF view = viewport();
    if (m_source.isEmpty())
        return 1;
    return float(std::min(view.width() / m_source.width(), view.height() / m_source.height()));
}

float ZoomGeometry::effectiveLevel() const
{
    return m_level > 0 ? m_level : fittedLevel();
}

void ZoomGeometry::setLevel(float level, const QPointF &anchor)
{
    if (level <= 0) {
        m_level = 0;
        m_middle = QPointF(0.5, 0.5);
        return;
    }
    const QSizeF view = viewport();
    const QPointF middle(view.width() / 2, view.height() / 2);
    const QPointF fixed = anchor.isNull() ? middle : anchor;
    const QSizeF before = frameSize();
    const QPointF offset = fixed - topLeft();
    const float fitted = fittedLevel();
    m_level = std::clamp(level, std::min(levels.front(), fitted), std::max(levels.back(), fitted));
    if (before.isEmpty())
        return;
    const QSizeF after = frameSize();
    moveTo(fixed
           - QPointF(offset.x() / before.width() * after.width(),
                     offset.y() / before.height() * after.height()));
}

float ZoomGeometry::nextLevel(int step) const
{
    const float level = effectiveLevel();
    if (step > 0) {
        const auto next = std::upper_bound(levels.begin(), levels.end(), level * sameLevel);
        const auto left = int(levels.end() - next);
        return left < 1 ? std::max(level, levels.back()) : *(next + (std::min(step, left) - 1));
    }
    if (step < 0) {
        const auto next = std::lower_bound(levels.begin(), levels.end(), level / sameLevel);
        const auto left = int(next - levels.begin());
        return left < 1 ? std::min(level, levels.front()) : *(next + std::max(step, -left));
    }
    return level;
}

QSizeF ZoomGeometry::frameSize() const
{
    if (m_source.isEmpty())
        return {};
    const float level = effectiveLevel();
    return {wholePixels(m_source.width(), level), wholePixels(m_source.height(), level)};
}

QPointF ZoomGeometry::topLeft() const
{
    const QSizeF view = viewport();
    const QSizeF frame = frameSize();
    return {topLeftOfAxis(view.width(), frame.width(), m_middle.x()),
            topLeftOfAxis(view.height(), frame.height(), m_middle.y())};
}

void ZoomGeometry::moveTo(const QPointF &topLeft)
{
    const QSizeF view = viewport();
    const QSizeF frame = frameSize();
    if (frame.isEmpty())
        return;
    m_middle = QPointF((view.width() / 2 - topLeft.x()) / frame.width(),
                       (view.height() / 2 - topLeft.y()) / frame.height());
    // What was asked for beyond the limits must not come back when the view port grows.
    const QPointF limited = this->topLeft();
    m_middle = QPointF((view.width() / 2 - limited.x()) / frame.width(),
                       (view.height() / 2 - limited.y()) / frame.height());
}

QRectF ZoomGeometry::frameRect() const
{
    if (m_source.isEmpty())
        return {};
    const QPointF corner = topLeft();
    return {QPointF(std::floor(corner.x() + 0.5), std::floor(corner.y() + 0.5)), frameSize()};
}

bool ZoomGeometry::canPan() const
{
    const QSizeF view = viewport();
    const QSizeF frame = frameSize();
    return m_level > 0 && (frame.width() > view.width() || frame.height() > view.height());
}

} // namespace zk::player
