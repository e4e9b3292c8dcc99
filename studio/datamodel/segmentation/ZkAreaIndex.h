#pragma once

#include "ZkArea.h"

#include <QPointF>

#include <array>

namespace zk::datamodel {

// The areas of one frame, found by a point: a grid over the frame whose cells hold the areas with their
// centre there. A search goes outwards from the point's cell and ends as soon as no centre further out
// can be nearer, so that it costs the same however many areas there are elsewhere. GUI thread only.
class ZKDATAMODEL_EXPORT AreaIndex
{
public:
    // What the index knew before is compared with the list, not built again.
    void setAreas(const Areas &areas);
    const Areas &areas() const { return m_areas; }

    // Of the areas that contain the point, the one whose centre is nearest; of several that are equally
    // near the smallest, then the one added last. -1 for none.
    qint64 find(const QPointF &point) const;

private:
    static constexpr int side = 32; // cells

    struct Best;
    static int cellOf(double fraction);
    QVector<AreaPtr> &cellFor(const Area &area);
    void searchRing(int x, int y, int radius, const QPointF &point, Best *best) const;

    Areas m_areas;
    std::array<QVector<AreaPtr>, side * side> m_cells;
};

} // namespace zk::datamodel
