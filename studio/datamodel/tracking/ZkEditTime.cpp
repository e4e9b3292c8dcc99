#include "ZkEditTime.h"

#include <limits>

namespace zk::datamodel {

bool EditTime::registerMicroseconds(qint64 begin, qint64 end)
{
    if (!isRange(begin, end) || end > std::numeric_limits<qint64>::max() / unitsPerMicrosecond)
        return false;
    m_begin = begin * unitsPerMicrosecond;
    m_end = end * unitsPerMicrosecond;
    return true;
}

bool EditTime::changeMicroseconds(qint64 begin, qint64 end)
{
    return m_begin < m_end && registerMicroseconds(begin, end);
}

bool EditTime::change(qint64 begin, qint64 end)
{
    if (m_begin == m_end || !isRange(begin, end))
        return false;
    m_begin = begin;
    m_end = end;
    return true;
}

bool EditTime::getMicroseconds(qint64 &begin, qint64 &end) const
{
    if (m_begin == m_end)
        return false;
    begin = m_begin / unitsPerMicrosecond;
    end = m_end / unitsPerMicrosecond + (m_end % unitsPerMicrosecond > 0 ? 1 : 0);
    return true;
}

} // namespace zk::datamodel
