#include "ZkMatteCache.h"

namespace zk::datamodel {

QImage MatteCache::find(const EncodedMatte &first, const EncodedMatte &second, const Make &make)
{
    QImage picture = taken(first, second);
    if (picture.isNull())
        picture = make();
    QMutexLocker lock(&m_mutex);
    if (m_entries.size() >= capacity)
        m_entries.removeFirst();
    m_entries.append({first, second, picture});
    return picture;
}

QImage MatteCache::taken(const EncodedMatte &first, const EncodedMatte &second)
{
    QMutexLocker lock(&m_mutex);
    for (int i = m_entries.size() - 1; i >= 0; --i) {
        const Entry &entry = m_entries.at(i);
        if (entry.first.isSharedWith(first) && entry.second.isSharedWith(second))
            return m_entries.takeAt(i).picture;
    }
    return {};
}

} // namespace zk::datamodel
