#include "ZkStudioPlayhead.h"

void ZkStudioPlayhead::setPosition(qint64 frame)
{
    frame = qBound(m_range.minimum, frame, m_range.maximum);
    if (frame == m_position)
        return;
    m_position = frame;
    // An observer that moves the playhead on has told everybody where it is by then; the rest of this
    // round would be old news. The counter outlives a playhead that an observer deletes.
    const std::shared_ptr<quint64> moves = m_moves;
    const quint64 move = ++*moves;
    m_observers.forEach([&](IZkPlayheadObserver *observer) {
        if (*moves == move)
            observer->onPlayheadMoved(frame);
    });
}

void ZkStudioPlayhead::setFrameRange(const ZkRange<qint64> &range)
{
    m_range = {range.minimum, qMax(range.minimum, range.maximum)};
    setPosition(m_position);
}

void ZkStudioPlayhead::addObserver(IZkPlayheadObserver *observer)
{
    m_observers.add(observer);
}

void ZkStudioPlayhead::removeObserver(IZkPlayheadObserver *observer)
{
    m_observers.remove(observer);
}
