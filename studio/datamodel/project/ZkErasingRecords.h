// Private to the data model: areas and saved selections as rows of a project file.
#pragma once

#include "../segmentation/ZkSegments.h"

#include <QVector>

namespace zk::storage {
struct ErasingRecord;
}

namespace zk::datamodel {

// Of a saved selection there is one mask for every frame: nobody edits it any more.
QVector<zk::storage::ErasingRecord> erasingRecords(const Segments &segments);

// Puts them into the segments, which have their nodes already. False when they are damaged.
bool readErasing(const QVector<zk::storage::ErasingRecord> &records,
                 const QSize &frameSize,
                 Segments *segments);

} // namespace zk::datamodel
