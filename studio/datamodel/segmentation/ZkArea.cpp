#include "ZkArea.h"

#include <algorithm>

namespace zk::datamodel {

namespace {

template<typename List>
auto placeOf(List &areas, qint64 id)
{
    return std::lower_bound(areas.begin(), areas.end(), id, [](const AreaPtr &area, qint64 sought) {
        return area->id < sought;
    });
}

} // namespace

void AreaDifference::unite(const AreaDifference &other)
{
    hasAdded = hasAdded || other.hasAdded;
    hasRemoved = hasRemoved || other.hasRemoved;
    hasUpdated = hasUpdated || other.hasUpdated;
}

AreaDifference differenceOf(const Areas &before, const Areas &after)
{
    AreaDifference difference;
    if (before.constData() == after.constData())
        return difference;
    auto old = before.constBegin();
    auto now = after.constBegin();
    while (old != before.constEnd() || now != after.constEnd()) {
        if (old != before.constEnd() && now != after.constEnd() && *old == *now) {
            ++old;
            ++now;
            continue;
        }
        const bool isGone =
            now == after.constEnd() || (old != before.constEnd() && (*old)->id < (*now)->id);
        const bool isNew = !isGone && (old == before.constEnd() || (*now)->id < (*old)->id);
        difference.hasRemoved = difference.hasRemoved || isGone;
        difference.hasAdded = difference.hasAdded || isNew;
        if (!isGone && !isNew)
            difference.hasUpdated = difference.hasUpdated || (*old)->rect != (*now)->rect;
        old += isNew ? 0 : 1;
        now += isGone ? 0 : 1;
    }
    return difference;
}

AreaPtr findArea(const Areas &areas, qint64 id)
{
    const auto place = placeOf(areas, id);
    return place != areas.end() && (*place)->id == id ? *place : AreaPtr();
}

Areas withArea(Areas areas, const AreaPtr &area)
{
    const auto place = placeOf(areas, area->id);
    if (place != areas.end() && (*place)->id == area->id)
        *place = area;
    else
        areas.insert(place, area);
    return areas;
}

Areas withoutArea(Areas areas, qint64 id)
{
    const auto place = placeOf(areas, id);
    if (place != areas.end() && (*place)->id == id)
        areas.erase(place);
    return areas;
}

} // namespace zk::datamodel
