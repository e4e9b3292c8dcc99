#include "ZkSegmentMarks.h"

#include "segmentation/ZkStudioSmartKeyingService.h"

#include <algorithm>
#include <iterator>

namespace zk::timeline {

void SegmentMarks::read(const ZkStudioSmartKeyingService *service, qint64 frameCount)
{
    m_nodes.clear();
    m_confidences.clear();
    m_frameCount = frameCount;
    m_isTracked = false;
    m_frameToCorrect = -1;
    if (!service)
        return;
    m_nodes = service->segments().nodes().keys().toVector();
    const auto &tracked = service->segments().tracked();
    for (auto it = tracked.cbegin(); it != tracked.cend(); ++it)
        readFrame(*service, it.key());
    // Only where it can be corrected.
    m_frameToCorrect = service->isEnabled() ? service->frameToCorrect() : -1;
}

void SegmentMarks::readFrame(const ZkStudioSmartKeyingService &service, qint64 frame)
{
    if (frame < 0 || frame >= m_frameCount)
        return;
    if (m_confidences.isEmpty())
        m_confidences.fill(-1, int(m_frameCount));
    m_confidences[int(frame)] = service.segments().confidenceAt(frame);
    m_isTracked = true;
}

float SegmentMarks::confidenceAt(qint64 frame) const
{
    return frame >= 0 && frame < m_confidences.size() ? m_confidences.at(int(frame)) : -1;
}

float SegmentMarks::highestConfidence(qint64 first, qint64 last) const
{
    float highest = -1;
    for (qint64 frame = first; frame <= last; ++frame)
        highest = std::max(highest, confidenceAt(frame));
    return highest;
}

bool NodeSelection::contains(qint64 frame) const
{
    return std::binary_search(m_frames.cbegin(), m_frames.cend(), frame);
}

bool NodeSelection::select(qint64 frame, Mode mode, const QVector<qint64> &nodes)
{
    if (!nodes.contains(frame))
        return false;
    QVector<qint64> frames {frame};
    if (mode == Toggle) {
        const bool wasIn = contains(frame);
        frames = m_frames;
        if (wasIn)
            frames.removeAll(frame);
        else
            frames.append(frame);
    } else if (mode == Extend && nodes.contains(m_anchor)) {
        const auto range = std::minmax(frame, m_anchor);
        std::copy_if(nodes.cbegin(), nodes.cend(), std::back_inserter(frames), [&](qint64 node) {
            return node != frame && node >= range.first && node <= range.second;
        });
        return assign(frames);
    }
    m_anchor = frame;
    return assign(frames);
}

bool NodeSelection::selectAll(const QVector<qint64> &nodes)
{
    return assign(nodes);
}

bool NodeSelection::keepOnly(const QVector<qint64> &nodes)
{
    QVector<qint64> frames;
    std::copy_if(m_frames.cbegin(), m_frames.cend(), std::back_inserter(frames), [&](qint64 frame) {
        return nodes.contains(frame);
    });
    return assign(frames);
}

bool NodeSelection::clear()
{
    m_anchor = -1;
    return assign({});
}

bool NodeSelection::assign(const QVector<qint64> &frames)
{
    QVector<qint64> sorted = frames;
    std::sort(sorted.begin(), sorted.end());
    if (sorted == m_frames)
        return false;
    m_frames = sorted;
    return true;
}

} // namespace zk::timeline
