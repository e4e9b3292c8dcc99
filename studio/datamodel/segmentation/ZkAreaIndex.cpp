#include "ZkAreaIndex.h"

#include <limits>

namespace zk::datamodel {

struct AreaIndex::Best
{
    AreaPtr area;
    double distance = std::numeric_limits<double>::max(); // squared

    void offer(const AreaPtr &candidate, const QPointF &point)
    {
        if (!candidate->rect.contains(point))
            return;
        const QPointF way = candidate->rect.center() - point;
        const double far = QPointF::dotProduct(way, way);
        if (far < distance || (far == distance && beats(*candidate))) {
            area = candidate;
            distance = far;
        }
    }

private:
    bool beats(const Area &candidate) const
    {
        const auto sizeOf = [](const Area &some) { return some.rect.width() * some.rect.height(); };
        const double size = sizeOf(candidate);
        const double best = sizeOf(*area);
        return size < best || (size == best && candidate.id > area->id);
    }
};

int AreaIndex::cellOf(double fraction)
{
    return qBound(0, int(fraction * side), side - 1);
}

QVector<AreaPtr> &AreaIndex::cellFor(const Area &area)
{
    const QPointF centre = area.rect.center();
    return m_cells[size_t(cellOf(centre.y()) * side + cellOf(centre.x()))];
}

void AreaIndex::setAreas(const Areas &areas)
{
    if (areas.constData() == m_areas.constData())
        return;
    auto old = m_areas.constBegin();
    auto now = areas.constBegin();
    while (old != m_areas.constEnd() || now != areas.constEnd()) {
        const bool isBoth = old != m_areas.constEnd() && now != areas.constEnd();
        if (isBoth && *old == *now) {
            ++old;
            ++now;
        } else if (now == areas.constEnd() || (isBoth && (*old)->id <= (*now)->id)) {
            cellFor(**old).removeOne(*old);
            ++old;
        } else {
            cellFor(**now).append(*now);
            ++now;
        }
    }
    m_areas = areas;
}

void AreaIndex::searchRing(int x, int y, int radius, const QPointF &point, Best *best) const
{
    for (int row = qMax(0, y - radius); row <= qMin(side - 1, y + radius); ++row) {
        const bool isWhole = row == y - radius || row == y + radius;
        const int step = isWhole || radius == 0 ? 1 : 2 * radius;
        for (int column = x - radius; column <= x + radius; column += step) {
            if (column < 0 || column >= side)
                continue;
            for (const AreaPtr &area : m_cells[size_t(row * side + column)])
                best->offer(area, point);
        }
    }
}

qint64 AreaIndex::find(const QPointF &point) const
{
    const int x = cellOf(point.x());
    const int y = cellOf(point.y());
    Best best;
    for (int radius = 0; radius < side; ++radius) {
        const double least = double(radius - 1) / side; // of any centre in this ring
        if (best.area && least > 0 && best.distance < least * least)
            break;
        searchRing(x, y, radius, point, &best);
    }
    return best.area ? best.area->id : -1;
}

} // namespace zk::datamodel
