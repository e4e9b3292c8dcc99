#include "ZkErasingRecords.h"

#include "../segmentation/ZkEraseMasks.h"
#include "ZkProjectRecords.h"

#include <QHash>

namespace zk::datamodel {

namespace {

using zk::storage::ErasingRecord;
using Records = QVector<ErasingRecord>;

ErasingRecord recordOf(int selection, qint64 frame, const EncodedMatte &matte)
{
    ErasingRecord record;
    record.selection = selection;
    record.frame = frame;
    if (!matte.isNull())
        record.matte = {matte.size(), matte.box(), matte.objectPixels(), matte.data()};
    return record;
}

void appendNode(qint64 frame, const SegmentNode &node, Records *records)
{
    if (node.areas.isEmpty())
        return;
    records->append(recordOf(-1, frame, node.brush));
    for (const AreaPtr &area : node.areas) {
        records->append(recordOf(-1, frame, area->object));
        records->last().area = area->id;
        records->last().rect = area->rect;
    }
}

void appendSelection(int index, const Segments &selection, Records *records)
{
    QMap<qint64, bool> frames;
    for (qint64 frame : selection.nodes().keys() + selection.tracked().keys())
        frames.insert(frame, true);
    const EraseMasks masks(selection);
    for (auto it = frames.constBegin(); it != frames.constEnd(); ++it) {
        const EncodedMatte mask = masks.at(it.key());
        if (!mask.isEmpty())
            records->append(recordOf(index, it.key(), mask));
    }
}

bool readMatte(const zk::storage::MatteRecord &record, const QSize &frameSize, EncodedMatte *matte)
{
    return record.isNull()
        || (record.size == frameSize
            && EncodedMatte::fromParts(
                record.size, record.box, record.objectPixels, record.pixels, matte));
}

bool isAreaRect(const QRectF &rect)
{
    return !rect.isEmpty() && QRectF(0, 0, 1, 1).contains(rect);
}

// Reads the rows of nodes into nodes, and those of selections into selections.
class Reader
{
public:
    explicit Reader(Segments *segments)
        : m_segments(segments)
    { }

    bool take(const ErasingRecord &record, const EncodedMatte &matte)
    {
        return record.selection < 0 ? takeOfNode(record, matte) : takeOfSelection(record, matte);
    }
    void finish()
    {
        for (auto it = m_nodes.constBegin(); it != m_nodes.constEnd(); ++it)
            m_segments->setNode(it.key(), it.value());
        Segments::Saved saved;
        for (const Segments &selection : qAsConst(m_selections))
            saved.append(std::make_shared<const Segments>(selection));
        m_segments->setSaved(saved);
    }

private:
    bool takeOfNode(const ErasingRecord &record, const EncodedMatte &matte)
    {
        QSharedPointer<SegmentNode> &node = m_nodes[record.frame];
        const SegmentNodePtr stored = m_segments->node(record.frame);
        if (!stored || (record.area > 0 && !isAreaRect(record.rect)))
            return false;
        if (!node)
            node = QSharedPointer<SegmentNode>::create(*stored);
        if (record.area <= 0) {
            node->brush = matte;
            return true;
        }
        const Area area {record.area, record.rect, matte};
        node->areas = withArea(node->areas, QSharedPointer<Area>::create(area));
        Segments::skipRevisions(quint64(record.area));
        return true;
    }
    bool takeOfSelection(const ErasingRecord &record, const EncodedMatte &matte)
    {
        if (record.selection > m_selections.size())
            return false;
        if (record.selection == m_selections.size())
            m_selections.append(Segments());
        TrackedSide side;
        side.matte = matte;
        side.confidence = 1;
        m_selections[record.selection].setTracked(record.frame, true, side);
        return true;
    }

    Segments *const m_segments;
    QHash<qint64, QSharedPointer<SegmentNode>> m_nodes;
    QVector<Segments> m_selections;
};

} // namespace

Records erasingRecords(const Segments &segments)
{
    Records records;
    const auto &nodes = segments.nodes();
    for (auto it = nodes.constBegin(); it != nodes.constEnd(); ++it)
        appendNode(it.key(), *it.value(), &records);
    int index = 0;
    for (const auto &selection : segments.saved()) {
        const int before = records.size();
        appendSelection(index, *selection, &records);
        index += records.size() > before ? 1 : 0;
    }
    return records;
}

bool readErasing(const Records &records, const QSize &frameSize, Segments *segments)
{
    Reader reader(segments);
    for (const ErasingRecord &record : records) {
        EncodedMatte matte;
        if (!readMatte(record.matte, frameSize, &matte) || !reader.take(record, matte))
            return false;
    }
    reader.finish();
    return true;
}

} // namespace zk::datamodel
