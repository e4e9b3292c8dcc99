#include "ZkNodeAreas.h"

#include "ZkMatteUnion.h"
#include "ZkPixels.h"

namespace zk::datamodel {

namespace {

QVector<EncodedMatte> objectsAt(const Areas &areas, const QRect &place)
{
    QVector<EncodedMatte> objects;
    for (const AreaPtr &area : areas) {
        if (area->object.box().intersects(place))
            objects.append(area->object);
    }
    return objects;
}

// The changed part of the mask is put together again from what overlaps it.
SegmentNodePtr nodeWithAreas(const SegmentNode &before,
                             const Areas &areas,
                             const QRect &changed,
                             const QSize &frameSize)
{
    const auto node = QSharedPointer<SegmentNode>::create(before);
    const EncodedMatte brush = before.brushMask();
    node->areas = areas;
    node->brush = areas.isEmpty() ? EncodedMatte() : brush;
    node->result = reunited(before.result, brush, objectsAt(areas, changed), frameSize, changed);
    node->revision = Segments::nextRevision();
    return node;
}

EncodedMatte without(const EncodedMatte &mask, const EncodedMatte &object)
{
    if (mask.isEmpty() || object.isEmpty())
        return mask;
    QImage image = mask.decoded();
    const QImage hole = object.decoded();
    if (image.size() != hole.size())
        return mask;
    writablePixelsOf(image).setTo(0, pixelsOf(hole));
    return EncodedMatte(image);
}

QRect boxOf(const AreaPtr &area)
{
    return area ? area->object.box() : QRect();
}

} // namespace

SegmentNodePtr nodeWithArea(const SegmentNodePtr &before,
                            const EncodedMatte &base,
                            const AreaPtr &area,
                            const QSize &frameSize)
{
    SegmentNode node;
    node.result = base;
    if (before)
        node = *before;
    node.erase = without(node.erase, area->object);
    const QRect changed = boxOf(area) | boxOf(findArea(node.areas, area->id));
    return nodeWithAreas(node, withArea(node.areas, area), changed, frameSize);
}

SegmentNodePtr nodeWithoutArea(const SegmentNodePtr &before, qint64 id, const QSize &frameSize)
{
    const Areas areas = withoutArea(before->areas, id);
    if (areas.isEmpty() && !before->isPainted())
        return {};
    return nodeWithAreas(*before, areas, boxOf(findArea(before->areas, id)), frameSize);
}

} // namespace zk::datamodel
