#include "ZkMatteTrack.h"

#include "ZkMatteCache.h"

#include <QDataStream>

namespace zk::datamodel {

namespace {

constexpr quint32 magic = 0x5a4b4d54; // "ZKMT"
constexpr qint32 version = 1;

} // namespace

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
    return m_cache->find(matte, {}, [&] { return matte.decoded(); });
}

qint64 MatteTrack::byteCount() const
{
    qint64 bytes = 0;
    for (const EncodedMatte &matte : m_mattes)
        bytes += matte.byteCount();
    return bytes;
}

QByteArray MatteTrack::serialised() const
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << magic << version << qint32(m_mattes.size());
    for (const EncodedMatte &matte : m_mattes)
        stream << matte;
    return data;
}

std::shared_ptr<const MatteTrack> MatteTrack::fromSerialised(const QByteArray &data)
{
    QDataStream stream(data);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 readMagic = 0;
    qint32 readVersion = 0;
    qint32 count = 0;
    stream >> readMagic >> readVersion >> count;
    if (readMagic != magic || readVersion != version)
        return nullptr;
    QVector<EncodedMatte> mattes; // grows with what is really there, whatever a damaged count says
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        mattes.append(EncodedMatte());
        stream >> mattes.last();
    }
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return nullptr;
    return std::make_shared<MatteTrack>(mattes);
}

} // namespace zk::datamodel
