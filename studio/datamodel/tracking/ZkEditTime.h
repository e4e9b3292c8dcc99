#pragma once

#include "ZkGlobal.h"

namespace zk::datamodel {

// The range of the source that an edit uses, in units of 100 ns, [begin, end). A range that is empty or
// negative is refused, and so is a change before one was registered; then nothing has changed.
class EditTime
{
public:
    bool registerMicroseconds(qint64 begin, qint64 end);
    bool changeMicroseconds(qint64 begin, qint64 end);
    bool change(qint64 begin, qint64 end);
    // The whole microseconds that the range touches.
    bool getMicroseconds(qint64 &begin, qint64 &end) const;

private:
    static constexpr qint64 unitsPerMicrosecond = 10;
    static bool isRange(qint64 begin, qint64 end) { return begin >= 0 && begin < end; }

    qint64 m_begin = 0;
    qint64 m_end = 0; // the same as the begin: none
};

} // namespace zk::datamodel
