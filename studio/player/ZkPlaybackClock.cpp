#include "ZkPlaybackClock_p.h"

#include <cmath>

namespace zk::player {

void PlaybackClock::start(qint64 frame, double rate)
{
    m_start = frame;
    m_rate = rate;
    m_timer.start();
}

qint64 PlaybackClock::frame() const
{
    const auto passed = qint64(framesPassed());
    return goesBackwards() ? m_start - passed : m_start + passed;
}

int PlaybackClock::millisecondsToNextFrame() const
{
    const double passed = framesPassed();
    const double missing = std::floor(passed) + 1 - passed;
    return qMax(1, int(std::ceil(missing / std::abs(m_rate) * 1000)));
}

double PlaybackClock::framesPassed() const
{
    return double(m_timer.nsecsElapsed()) * 1e-9 * std::abs(m_rate);
}

} // namespace zk::player
