#include "ZkMatteTrack.h"

#include "ZkMatteCache.h"

namespace zk::datamodel {

MatteTrack::MatteTrack(const QVector<EncodedMatte> &mattes)
    : m_mattes(mattes)
    , m_cache(std::make_unique<MatteCache>())
{ }

MatteTrack::~MatteTrack() = default;

QImage MatteTrack::matteAt(qint64 frame) const
{
    if (frame < 0 || frame >= frameCount())
        return {};
    const EncodedMatte &matte = m_mattes.at(int(frame));
    return m_cache->find({matte}, [&] { return matte.decoded(); });
}

qint64 MatteTrack::byteCount() const
{
    qint64 bytes = 0;
    for (const EncodedMatte &matte : m_mattes)
        bytes += matte.byteCount();
    return bytes;
}

} // namespace zk::datamodel
