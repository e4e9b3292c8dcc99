#include "ZkMaskFile.h"

#include <QDataStream>
#include <QSize>

namespace zk::erasing {

namespace {

constexpr QDataStream::Version streamVersion = QDataStream::Qt_5_15;

} // namespace

// The masks, a list of their offsets, and the offset of that list.
bool MaskFile::write(const QString &path, const QVector<datamodel::EncodedMatte> &masks)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream stream(&file);
    stream.setVersion(streamVersion);
    QVector<qint64> offsets;
    for (const datamodel::EncodedMatte &mask : masks) {
        offsets.append(file.pos());
        stream << mask.size() << mask.box() << qint32(mask.objectPixels()) << mask.data();
    }
    const qint64 list = file.pos();
    stream << offsets << list;
    return stream.status() == QDataStream::Ok && file.flush();
}

bool MaskFile::open(const QString &path)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly) || !m_file.seek(m_file.size() - qint64(sizeof(qint64))))
        return false;
    QDataStream stream(&m_file);
    stream.setVersion(streamVersion);
    qint64 list = -1;
    stream >> list;
    if (stream.status() != QDataStream::Ok || !m_file.seek(list))
        return false;
    stream >> m_offsets;
    return stream.status() == QDataStream::Ok;
}

bool MaskFile::read(int index, QImage *mask)
{
    QDataStream stream(&m_file);
    stream.setVersion(streamVersion);
    QSize size;
    QRect box;
    qint32 objectPixels = 0;
    QByteArray data;
    if (!m_file.seek(m_offsets.value(index, -1)))
        return false;
    stream >> size >> box >> objectPixels >> data;
    *mask = QImage();
    if (stream.status() != QDataStream::Ok)
        return false;
    if (size.isEmpty())
        return true;
    datamodel::EncodedMatte matte;
    if (datamodel::EncodedMatte::fromParts(size, box, objectPixels, data, &matte))
        *mask = matte.decoded();
    return !mask->isNull();
}

} // namespace zk::erasing
