#include "ZkEraseMasks.h"

#include "ZkMatteUnion.h"

namespace zk::datamodel {

bool EraseMasks::isEmpty() const
{
    return m_segments.isEmpty();
}

// The masks that are not empty.
QVector<EncodedMatte> EraseMasks::masksAt(qint64 frame) const
{
    QVector<Segments> parts {m_segments};
    for (const auto &selection : m_segments.saved())
        parts.append(*selection);
    QVector<EncodedMatte> masks;
    for (const Segments &part : qAsConst(parts)) {
        if (!part.hasAnything(frame))
            continue;
        const EncodedMatte stored = part.storedAt(frame);
        masks.append(stored.isNull() ? EncodedMatte(part.matteAt(frame)) : stored);
    }
    return masks;
}

EncodedMatte EraseMasks::at(qint64 frame) const
{
    const QVector<EncodedMatte> masks = masksAt(frame);
    return masks.size() > 1 ? EncodedMatte(unionOf(masks)) : masks.value(0);
}

QImage EraseMasks::pictureAt(qint64 frame) const
{
    return m_segments.saved().isEmpty() ? m_segments.matteAt(frame) : unionOf(masksAt(frame));
}

} // namespace zk::datamodel
