#pragma once

#include "ZkSegments.h"

namespace zk::datamodel {

// What is to be erased from every frame of a clip: what is marked and tracked, and all selections that
// were saved before. A value that stays as it was when it was taken; any thread may hold and read it.
class ZKDATAMODEL_EXPORT EraseMasks
{
public:
    EraseMasks() = default;
    explicit EraseMasks(const Segments &segments)
        : m_segments(segments)
    { }

    // Whether there is nothing to be erased from any frame.
    bool isEmpty() const;
    // "No mask" for a frame from which nothing is erased. A mask that comes from one place alone shares
    // its bytes with it.
    EncodedMatte at(qint64 frame) const;
    // The same, Format_Grayscale8, for showing it.
    QImage pictureAt(qint64 frame) const;

private:
    QVector<EncodedMatte> masksAt(qint64 frame) const;

    Segments m_segments;
};

} // namespace zk::datamodel
