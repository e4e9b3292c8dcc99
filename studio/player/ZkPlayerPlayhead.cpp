#include "ZkPlayerPlayhead_p.h"

#include <utility>

namespace zk::player {

PlayerPlayhead::PlayerPlayhead(Seeks seeks)
    : m_seeks(std::move(seeks))
{ }

void PlayerPlayhead::setPosition(qint64 frame)
{
    if (m_isPlacing || !m_seeks.accepted())
        return;
    const qint64 before = position();
    move(frame);
    if (position() != before)
        m_seeks.made();
}

void PlayerPlayhead::move(qint64 frame)
{
    ZkStudioPlayhead::setPosition(frame);
}

void PlayerPlayhead::place(const ZkRange<qint64> &range, qint64 frame)
{
    // Keeps the base from moving the playhead into the range first, and from calling that a seek.
    m_isPlacing = true;
    setFrameRange(range);
    m_isPlacing = false;
    move(frame);
}

} // namespace zk::player
