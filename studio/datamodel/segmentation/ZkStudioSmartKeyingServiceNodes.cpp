// The part of the service that has to do with nodes, their results and saved selections.
#include "ZkStudioSmartKeyingService.h"

#include "../timeline/ZkStudioTimeline.h"
#include "ZkNodeResult.h"

#include <iterator>

using namespace zk::datamodel;

class ZkStudioSmartKeyingService::NodeItem : public IZkUndoRedoItem
{
public:
    // Quiet: the node listener hears nothing of it the first time.
    NodeItem(ZkStudioSmartKeyingService *service,
             qint64 frame,
             const SegmentNodePtr &after,
             const QString &text,
             bool isQuiet = false)
        : m_service(service)
        , m_frame(frame)
        , m_before(service->m_segments.node(frame))
        , m_after(after)
        , m_text(text)
        , m_isQuiet(isQuiet)
    { }

    void redo() override
    {
        m_service->restoreNode(m_frame, m_after, m_isQuiet);
        m_isQuiet = false;
    }
    void undo() override { m_service->restoreNode(m_frame, m_before); }
    QString description() const override { return m_text; }

private:
    ZkStudioSmartKeyingService *const m_service;
    const qint64 m_frame;
    const SegmentNodePtr m_before;
    const SegmentNodePtr m_after;
    const QString m_text;
    bool m_isQuiet;
};

class ZkStudioSmartKeyingService::SegmentsItem : public IZkUndoRedoItem
{
public:
    SegmentsItem(ZkStudioSmartKeyingService *service, const Segments &after, const QString &text)
        : m_service(service)
        , m_before(service->m_segments)
        , m_after(after)
        , m_text(text)
    { }

    void redo() override { m_service->restoreSegments(m_after); }
    void undo() override { m_service->restoreSegments(m_before); }
    QString description() const override { return m_text; }

private:
    ZkStudioSmartKeyingService *const m_service;
    const Segments m_before;
    const Segments m_after;
    const QString m_text;
};

void ZkStudioSmartKeyingService::changeNode(qint64 frame,
                                            const SegmentNodePtr &node,
                                            const QString &text)
{
    timeline()->undoRedoService()->push(new NodeItem(this, frame, node, text));
}

void ZkStudioSmartKeyingService::restoreNode(qint64 frame, const SegmentNodePtr &node, bool isQuiet)
{
    const Areas before = areasOf(frame);
    m_segments.setNode(frame, node);
    ++m_change;
    if (!isQuiet && !m_notice.nodes.contains(frame))
        m_notice.nodes.append(frame);
    reportAreas(differenceOf(before, areasOf(frame)));
}

// The option flag is not part of the history.
void ZkStudioSmartKeyingService::restoreSegments(const Segments &segments, bool isQuiet)
{
    Segments after = segments;
    after.setSingleObject(m_segments.isSingleObject());
    QMap<qint64, SegmentNodePtr> nodes = m_segments.nodes();
    for (auto it = after.nodes().constBegin(); it != after.nodes().constEnd(); ++it)
        nodes.insert(it.key(), it.value());
    AreaDifference difference;
    const Segments before = std::exchange(m_segments, after);
    ++m_change;
    for (auto it = nodes.constBegin(); it != nodes.constEnd(); ++it) {
        const SegmentNodePtr old = before.node(it.key());
        difference.unite(differenceOf(old ? old->areas : Areas(), areasOf(it.key())));
        const bool isNews = !isQuiet && old != m_segments.node(it.key());
        if (isNews && !m_notice.nodes.contains(it.key()))
            m_notice.nodes.append(it.key());
    }
    reportAreas(difference);
}

void ZkStudioSmartKeyingService::pushSegments(const Segments &segments, const QString &text)
{
    timeline()->undoRedoService()->push(new SegmentsItem(this, segments, text));
}

void ZkStudioSmartKeyingService::reportAreas(const AreaDifference &difference)
{
    shownAreas(); // what the next frame's are compared with
    ZkTimelineChanges changes;
    if (difference.hasAdded)
        changes.add(ZKTIMELINE::SegmentChange, ZKTIMELINE::SelectAreaAdded);
    if (difference.hasRemoved)
        changes.add(ZKTIMELINE::SegmentChange, ZKTIMELINE::SelectAreaRemoved);
    if (difference.hasUpdated)
        changes.add(ZKTIMELINE::SegmentChange, ZKTIMELINE::SelectAreaUpdated);
    m_notice.hasAreas = m_notice.hasAreas || !changes.isEmpty();
    if (changes.isEmpty())
        changes.add(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
    const std::weak_ptr<int> alive = m_alive;
    timeline()->reportChanges(changes);
    if (!alive.expired())
        tellLater();
}

void ZkStudioSmartKeyingService::tellLater()
{
    if (m_notice.isDue)
        return;
    m_notice.isDue = true;
    timeline()->undoRedoService()->runAfterStep([this, alive = std::weak_ptr<int>(m_alive)] {
        if (!alive.expired())
            tell();
    });
}

// Whoever hears of it may delete the service.
void ZkStudioSmartKeyingService::tell()
{
    const std::weak_ptr<int> alive = m_alive;
    const Notice notice = std::exchange(m_notice, Notice());
    if (notice.hasAreas)
        reportChange();
    for (qint64 frame : notice.nodes) {
        if (!alive.expired() && m_nodeListener)
            m_nodeListener(frame);
    }
}

bool ZkStudioSmartKeyingService::removeNodes(const QVector<qint64> &frames, const QString &text)
{
    QVector<qint64> nodes;
    for (qint64 frame : frames) {
        if (m_segments.node(frame) && !nodes.contains(frame))
            nodes.append(frame);
    }
    if (m_isLocked || nodes.isEmpty())
        return false;
    ZkStudioUndoRedoService *undo = timeline()->undoRedoService();
    // The step is closed before the change is reported.
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(
        undo, text, QStringLiteral("ZkStudioSmartKeyingService::removeNodes"));
    for (qint64 frame : qAsConst(nodes))
        changeNode(frame, {}, text);
    return true;
}

qint64 ZkStudioSmartKeyingService::segmentNodeAt(int index) const
{
    if (index < 0 || index >= segmentCount())
        return -1;
    return std::next(m_segments.nodes().constBegin(), index).key();
}

int ZkStudioSmartKeyingService::segmentIndexAt(qint64 frame) const
{
    const auto place = m_segments.nodes().constFind(frame);
    if (place == m_segments.nodes().constEnd())
        return -1;
    return int(std::distance(m_segments.nodes().constBegin(), place));
}

bool ZkStudioSmartKeyingService::selectSegmentNode(qint64 frame)
{
    if (!m_segments.node(frame))
        return false;
    m_selectedNode = frame;
    return true;
}

qint64 ZkStudioSmartKeyingService::selectedSegmentNode() const
{
    return m_segments.node(m_selectedNode) ? m_selectedNode : -1;
}

void ZkStudioSmartKeyingService::setOptionFlag(bool isSingleObject)
{
    if (m_segments.isSingleObject() == isSingleObject)
        return;
    m_segments.setSingleObject(isSingleObject);
    reportChange();
}

ZkSegmentResultPtr ZkStudioSmartKeyingService::nodeResult(qint64 frame) const
{
    const SegmentNodePtr node = m_segments.node(frame);
    return node ? NodeResult::create(node->result) : ZkSegmentResultPtr();
}

bool ZkStudioSmartKeyingService::setNodeResult(qint64 frame, const ZkSegmentResultPtr &result)
{
    const auto *given = dynamic_cast<const NodeResult *>(result.get());
    if (m_isLocked || !given || given->matte().size() != m_clip->frameSize() || frame < 0
        || frame >= m_clip->frameCount())
        return false;
    const auto node = QSharedPointer<SegmentNode>::create();
    node->given = given->matte();
    node->result = given->matte();
    node->revision = Segments::nextRevision();
    changeNode(frame, node, tr("Set mask"));
    return true;
}

bool ZkStudioSmartKeyingService::removeSegmentNode(qint64 frame)
{
    if (m_isLocked || !m_segments.node(frame))
        return false;
    const std::weak_ptr<int> alive = m_alive;
    ZkStudioUndoRedoService *undo = timeline()->undoRedoService();
    const bool isRecorded = undo->isRecording();
    if (!isRecorded && (!m_departure || m_departure->change != m_change))
        m_departure = Departure {m_segments, 0};
    const bool isLast = segmentCount() == 1;
    const quint64 change = m_change + 1;
    undo->push(new NodeItem(this, frame, {}, tr("Remove object"), true));
    if (alive.expired() || isRecorded)
        return true;
    if (m_departure && m_change == change) {
        m_departure->change = change;
        if (isLast)
            keepSelection();
    }
    return true;
}

// What is tracked leaves the workspace with the nodes that it came from. Pictures are never tracked:
// their node is all there is.
void ZkStudioSmartKeyingService::keepSelection()
{
    Segments selection = m_departure->before;
    m_departure.reset();
    m_canTakeSaveBack =
        !selection.tracked().isEmpty() || m_clip->frameCount() == 1 || m_clip->media().isStill;
    if (!m_canTakeSaveBack)
        return;
    selection.setSaved({});
    Segments::Saved saved = m_segments.saved();
    saved.append(std::make_shared<const Segments>(selection));
    m_segments.setSaved(saved);
    setTracked({});
    reportChange();
}

void ZkStudioSmartKeyingService::clearTrackingResults()
{
    if (m_isLocked)
        return;
    Segments after;
    if (!timeline()->undoRedoService()->isRecording()) {
        Segments::Saved saved = m_segments.saved();
        if (std::exchange(m_canTakeSaveBack, false) && !saved.isEmpty())
            saved.removeLast();
        after.setSaved(saved);
    }
    const bool isClear = m_segments.nodes().isEmpty() && m_segments.tracked().isEmpty()
        && m_segments.saved().size() == after.saved().size();
    if (!isClear)
        pushSegments(after, tr("Clear selection"));
}

EraseMasks ZkStudioSmartKeyingService::eraseMasks() const
{
    return EraseMasks(m_segments);
}

bool ZkStudioSmartKeyingService::discardSavedSelections()
{
    if (m_isLocked || m_segments.saved().isEmpty())
        return false;
    Segments after = m_segments;
    after.setSaved({});
    pushSegments(after, tr("Discard saved selections"));
    return true;
}
