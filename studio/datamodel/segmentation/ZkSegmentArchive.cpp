#include "ZkSegmentArchive.h"

#include <QDataStream>

namespace zk::datamodel {

namespace {

constexpr quint32 magic = 0x5a4b5347; // "ZKSG"
constexpr qint32 version = 1;

QDataStream &operator<<(QDataStream &stream, const SegmentSettings &settings)
{
    return stream << qint32(settings.type) << settings.overlayColour
                  << qint32(settings.overlayAlpha) << settings.invert;
}

QDataStream &operator>>(QDataStream &stream, SegmentSettings &settings)
{
    qint32 type = 0;
    qint32 alpha = 0;
    stream >> type >> settings.overlayColour >> alpha >> settings.invert;
    settings.type = zk::effects::PreviewType(qBound(1, type, 4));
    settings.overlayAlpha = qBound(0, alpha, 255);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const SegmentNode &node)
{
    return stream << node.keep << node.remove << node.erase << node.given << node.result
                  << node.revision;
}

QDataStream &operator>>(QDataStream &stream, SegmentNode &node)
{
    return stream >> node.keep >> node.remove >> node.erase >> node.given >> node.result
        >> node.revision;
}

QDataStream &operator<<(QDataStream &stream, const TrackedSide &side)
{
    return stream << side.matte << side.confidence << side.seed << side.seedRevision << side.serial;
}

QDataStream &operator>>(QDataStream &stream, TrackedSide &side)
{
    return stream >> side.matte >> side.confidence >> side.seed >> side.seedRevision >> side.serial;
}

// Grows with what is really there, whatever a damaged count says.
template<typename Read>
void readEntries(QDataStream &stream, Read read)
{
    qint32 count = 0;
    stream >> count;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        qint64 frame = 0;
        stream >> frame;
        read(frame);
    }
}

void write(QDataStream &stream, const Segments &segments)
{
    stream << qint32(segments.nodes().size());
    for (auto it = segments.nodes().constBegin(); it != segments.nodes().constEnd(); ++it)
        stream << it.key() << *it.value();
    stream << qint32(segments.tracked().size());
    for (auto it = segments.tracked().constBegin(); it != segments.tracked().constEnd(); ++it)
        stream << it.key() << it.value().forward << it.value().backward;
}

void read(QDataStream &stream, Segments *segments)
{
    readEntries(stream, [&](qint64 frame) {
        const auto node = QSharedPointer<SegmentNode>::create();
        stream >> *node;
        Segments::skipRevisions(node->revision);
        segments->setNode(frame, node);
    });
    QMap<qint64, TrackedMattes> tracked;
    readEntries(stream, [&](qint64 frame) {
        TrackedMattes &mattes = tracked[frame];
        stream >> mattes.forward >> mattes.backward;
        Segments::skipRevisions(qMax(mattes.forward.serial, mattes.backward.serial));
    });
    segments->setTracked(tracked);
}

} // namespace

QByteArray archived(const Segments &segments, const SegmentSettings &settings)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << magic << version << settings;
    write(stream, segments);
    return data;
}

bool unarchive(const QByteArray &data, Segments *segments, SegmentSettings *settings)
{
    QDataStream stream(data);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 readMagic = 0;
    qint32 readVersion = 0;
    stream >> readMagic >> readVersion;
    if (readMagic != magic || readVersion != version)
        return false;
    Segments readSegments;
    SegmentSettings readSettings;
    stream >> readSettings;
    read(stream, &readSegments);
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return false;
    *segments = readSegments;
    *settings = readSettings;
    return true;
}

} // namespace zk::datamodel
