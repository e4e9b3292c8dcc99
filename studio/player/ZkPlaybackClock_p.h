// Not public. Which frame is due during playback.
#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

namespace zk::player {

// Runs on the wall clock and not on the frames that were shown, so that playback that falls behind
// drops frames and keeps its rate.
class PlaybackClock
{
public:
    // rate in frames per second, negative to go backwards; not 0.
    void start(qint64 frame, double rate);
    qint64 frame() const;
    // Until another frame is due, at least 1 ms.
    int millisecondsToNextFrame() const;
    bool goesBackwards() const { return m_rate < 0; }
    double rate() const { return m_rate; }

private:
    double framesPassed() const;

    QElapsedTimer m_timer;
    qint64 m_start = 0;
    double m_rate = 1;
};

} // namespace zk::player
