// Not public. The player's own playhead.
#pragma once

#include "timeline/ZkStudioPlayhead.h"

#include <functional>

namespace zk::player {

// Tells the player's own moves (playback, tracking, opening) from everybody else's, which are seeks.
// GUI thread only.
class PlayerPlayhead : public ZkStudioPlayhead
{
public:
    struct Seeks
    {
        std::function<bool()> accepted; // whether a seek may be made now
        std::function<void()> made; // called when the observers have heard the new position
    };

    explicit PlayerPlayhead(Seeks seeks);

    // A seek. One to where the playhead is, is none.
    void setPosition(qint64 frame) override;

    // A move by the player; clamped like a seek.
    void move(qint64 frame);
    // The same with a new range, in one move.
    void place(const ZkRange<qint64> &range, qint64 frame);

private:
    Seeks m_seeks;
    bool m_isPlacing = false;
};

} // namespace zk::player
