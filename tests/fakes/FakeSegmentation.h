// The segmentation service of a clip: undoable nodes and areas, and the rest as tests set it.
#pragma once

#include "FakeTimeline.h"

#include "datamodel/ZkSmartKeyingEditing.h"

#include <QLineF>
#include <QMap>

namespace zk::fake {

// Counts how many there are.
class SegmentResult final : public IZkSegmentResult
{
public:
    explicit SegmentResult(int *living)
        : m_living(living)
    {
        ++*m_living;
    }
    void addReference() override { ++m_references; }
    void release() override
    {
        if (--m_references == 0)
            delete this;
    }

private:
    ~SegmentResult() override { --*m_living; }

    int *m_living;
    int m_references = 1;
};

// What undo brings back.
struct SegmentContents
{
    QMap<qint64, ZkSegmentResultPtr> nodes;
    QVector<QPair<qint64, QRectF>> areas; // with their ids
    bool tracked = false;
};

// Operations that must not be undoable note at their end whether history is recorded.
class SmartKeyingService : public IZkSmartKeyingService, public SegmentContents
{
public:
    explicit SmartKeyingService(Timeline *timeline)
        : m_timeline(timeline)
    { }
    void setEnabled(bool on) override
    {
        note("service.setEnabled", on);
        enabled = on;
        report(ZKTIMELINE::SegmentData);
    }
    bool isEnabled() const override { return enabled; }
    ZKSMARTKEYING::ZkSegmentWorkMode workMode() const override { return mode; }
    int maskItemCount() const override { return items + segmentCount(); }
    bool isTracked() const override { return tracked; }
    bool isEraseEnabled(qint64 frame) const override { return frame == erasableFrame; }
    bool overlapsMask(const QImage &, qint64 frame) const override
    {
        return overlaps && frame == erasableFrame;
    }
    int minimumPenWidth(const QSize &shown) const override { return qMax(1, shown.width() / 100); }
    void reset() override
    {
        note("service.reset");
        items = 0;
        contents() = SegmentContents();
        m_timeline->undo.clearHistory();
    }
    void setPreviewType(ZKSMARTKEYING::ZkPreviewType type) override { m_previewType = type; }
    ZKSMARTKEYING::ZkPreviewType previewType() const override { return m_previewType; }
    void setMaskRegionColor(const QColor &color) override
    {
        note("service.setMaskRegionColor", color, recorded());
        m_color = color;
    }
    QColor maskRegionColor() const override { return m_color; }
    void setMaskRegionAlpha(int alpha) override
    {
        note("service.setMaskRegionAlpha", alpha, recorded());
        m_alpha = alpha;
    }
    int maskRegionAlpha() const override { return m_alpha; }
    void setMaskInverted(bool on) override { m_inverted = on; }
    bool isMaskInverted() const override { return m_inverted; }

    bool setNodeResult(qint64 node, const ZkSegmentResultPtr &result) override
    {
        note("service.setNodeResult", node, recorded());
        SegmentContents after = contents();
        after.nodes.insert(node, result);
        change(after, ZKTIMELINE::SegmentData, ZKTIMELINE::SegmentData);
        return bool(result);
    }
    void setOptionFlag(bool on) override { note("service.setOptionFlag", on); }
    int segmentCount() const override { return nodes.size(); }
    qint64 segmentNodeAt(int index) const override { return nodes.keys().value(index, -1); }
    int segmentIndexAt(qint64 frame) const override { return nodes.keys().indexOf(frame); }
    bool selectSegmentNode(qint64 frame) override { return nodes.contains(frame); }
    bool removeSegmentNode(qint64 node) override
    {
        note("service.removeSegmentNode", node, recorded());
        SegmentContents after = contents();
        const bool removed = after.nodes.remove(node) > 0;
        change(after, ZKTIMELINE::SegmentData, ZKTIMELINE::SegmentData);
        return removed;
    }
    void clearTrackingResults() override
    {
        note("service.clearTrackingResults", recorded());
        change(SegmentContents(), ZKTIMELINE::SegmentData, ZKTIMELINE::SegmentData);
    }
    ZkSegmentResultPtr nodeResult(qint64 node) const override { return nodes.value(node); }

    int addArea(const QRectF &rect) override
    {
        note("service.addArea", rect);
        if (refusesAreas)
            return -1;
        SegmentContents after = contents();
        after.areas.append({m_lastAreaId += 10, rect});
        change(after, ZKTIMELINE::SelectAreaAdded, ZKTIMELINE::SelectAreaRemoved);
        return areas.size() - 1;
    }
    bool removeArea(qint64 id) override
    {
        note("service.removeArea", id);
        const int index = indexOfArea(id);
        if (refusesAreas || index < 0)
            return false;
        SegmentContents after = contents();
        after.areas.remove(index);
        change(after, ZKTIMELINE::SelectAreaRemoved, ZKTIMELINE::SelectAreaAdded);
        return true;
    }
    bool updateArea(qint64 id, const QRectF &rect) override
    {
        note("service.updateArea", id, rect);
        const int index = indexOfArea(id);
        if (refusesAreas || index < 0)
            return false;
        SegmentContents after = contents();
        after.areas[index].second = rect;
        change(after, ZKTIMELINE::SelectAreaUpdated, ZKTIMELINE::SelectAreaUpdated);
        return true;
    }
    int areaCount() const override { return areas.size(); }
    QRectF areaRect(int area) const override { return areas.value(area).second; }
    QRectF areaRectAt(int index) const override
    {
        return areaAnswers >= 0 && areaAnswers-- == 0 ? QRectF() : areaRect(index);
    }
    qint64 findAreaIdAt(double x, double y) const override
    {
        const QPointF point(x, y);
        qreal nearest = 2;
        qint64 found = -1;
        for (const auto &area : areas) {
            const qreal distance = QLineF(area.second.center(), point).length();
            if (findsAreas && area.second.contains(point) && distance < nearest) {
                nearest = distance;
                found = area.first;
            }
        }
        return found;
    }
    void setRenderAllAreaMasks(bool masks, bool outlines) override
    {
        note("service.setRenderAllAreaMasks", masks, outlines);
    }
    void report(int subKind) { m_timeline->report({ZKTIMELINE::SegmentChange, subKind}); }

    bool enabled = false;
    ZKSMARTKEYING::ZkSegmentWorkMode mode = ZKSMARTKEYING::EditingMode;
    int items = 0; // beside the nodes
    qint64 erasableFrame = -1;
    bool overlaps = true;
    bool refusesAreas = false;
    bool findsAreas = true;
    mutable int areaAnswers = -1; // that many rectangles, then one that is empty; negative: all

private:
    SegmentContents &contents() { return *this; }
    bool recorded() const { return m_timeline->undo.isRecording(); }
    int indexOfArea(qint64 id) const
    {
        for (int i = 0; i < areas.size(); ++i) {
            if (areas.at(i).first == id)
                return i;
        }
        return -1;
    }
    void change(const SegmentContents &after, int subKind, int undoneSubKind)
    {
        const auto set = [this](const SegmentContents &value, int kind) {
            contents() = value;
            report(kind);
        };
        const SegmentContents before = contents();
        m_timeline->undo.push(
            new Step([=] { set(after, subKind); }, [=] { set(before, undoneSubKind); }));
    }

    Timeline *m_timeline;
    qint64 m_lastAreaId = 0;
    ZKSMARTKEYING::ZkPreviewType m_previewType = ZKSMARTKEYING::InteractivePreview;
    QColor m_color;
    int m_alpha = 255;
    bool m_inverted = false;
};

} // namespace zk::fake
