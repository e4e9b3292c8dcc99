#pragma once

#include "ZkGlobal.h"

#include <QVector>

class ZkStudioSmartKeyingService;

namespace zk::timeline {

// What a timeline shows of a clip's segmentation.
class ZKTIMELINEVIEW_EXPORT SegmentMarks
{
public:
    // A null service has none.
    void read(const ZkStudioSmartKeyingService *service, qint64 frameCount);
    void readFrame(const ZkStudioSmartKeyingService &service, qint64 frame);

    const QVector<qint64> &nodes() const { return m_nodes; } // ascending
    // 0 to 1 where tracking came by; -1 elsewhere, and outside the clip.
    float confidenceAt(qint64 frame) const;
    // The surest frame of [first, last].
    float highestConfidence(qint64 first, qint64 last) const;
    bool isTracked() const { return m_isTracked; }
    // As of the last read(), where the segmentation is being edited; -1: none.
    qint64 frameToCorrect() const { return m_frameToCorrect; }

private:
    QVector<qint64> m_nodes;
    QVector<float> m_confidences; // by frame; empty when nothing is tracked
    qint64 m_frameCount = 0;
    bool m_isTracked = false;
    qint64 m_frameToCorrect = -1;
};

// The nodes that the user has picked.
class ZKTIMELINEVIEW_EXPORT NodeSelection
{
public:
    enum Mode {
        Replace,
        Toggle, // that node alone
        Extend, // from the node that was picked last, to that node
    };

    const QVector<qint64> &frames() const { return m_frames; } // ascending
    bool contains(qint64 frame) const;

    // Each is true when the selection has changed. The nodes are ascending.
    bool select(qint64 frame, Mode mode, const QVector<qint64> &nodes);
    bool selectAll(const QVector<qint64> &nodes);
    // Drops what is no node any more.
    bool keepOnly(const QVector<qint64> &nodes);
    bool clear();

private:
    bool assign(const QVector<qint64> &frames);

    QVector<qint64> m_frames;
    qint64 m_anchor = -1; // -1: none
};

} // namespace zk::timeline
