#include "ZkMatteCache.h"

#include <algorithm>

namespace zk::datamodel {

QImage MatteCache::find(const QVector<EncodedMatte> &parts, const Make &make)
{
    QImage picture = taken(parts);
    if (picture.isNull())
        picture = make();
    QMutexLocker lock(&m_mutex);
    if (m_entries.size() >= capacity)
        m_entries.removeFirst();
    m_entries.append({parts, picture});
    return picture;
}

QImage MatteCache::taken(const QVector<EncodedMatte> &parts)
{
    QMutexLocker lock(&m_mutex);
    for (int i = m_entries.size() - 1; i >= 0; --i) {
        const QVector<EncodedMatte> &known = m_entries.at(i).parts;
        const auto isShared = [](const EncodedMatte &a, const EncodedMatte &b) {
            return a.isSharedWith(b);
        };
        if (std::equal(known.begin(), known.end(), parts.begin(), parts.end(), isShared))
            return m_entries.takeAt(i).picture;
    }
    return {};
}

} // namespace zk::datamodel
