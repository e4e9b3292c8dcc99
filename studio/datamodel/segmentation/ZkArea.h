#pragma once

#include "ZkEncodedMatte.h"

#include <QRectF>
#include <QSharedPointer>
#include <QVector>

namespace zk::datamodel {

// A rectangle that the user drew around an object on one frame.
struct Area
{
    qint64 id = 0; // never used twice
    QRectF rect; // fractions of the frame's width and height
    EncodedMatte object; // what was found in it
};
using AreaPtr = QSharedPointer<const Area>;

// In the order in which they were added, that is by id. Whoever undoes a removal puts an area back
// where it was.
using Areas = QVector<AreaPtr>;

// How one list of areas differs from another one in what the user sees: not in the objects.
struct AreaDifference
{
    bool hasAdded = false;
    bool hasRemoved = false;
    bool hasUpdated = false;

    bool isEmpty() const { return !hasAdded && !hasRemoved && !hasUpdated; }
    void unite(const AreaDifference &other);
};

ZKDATAMODEL_EXPORT AreaDifference differenceOf(const Areas &before, const Areas &after);

// Null for none.
ZKDATAMODEL_EXPORT AreaPtr findArea(const Areas &areas, qint64 id);
// The list with the area in its place; one with the same id goes.
ZKDATAMODEL_EXPORT Areas withArea(Areas areas, const AreaPtr &area);
ZKDATAMODEL_EXPORT Areas withoutArea(Areas areas, qint64 id);

} // namespace zk::datamodel
