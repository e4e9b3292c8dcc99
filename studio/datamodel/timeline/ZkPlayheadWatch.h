#pragma once

#include "datamodel/ZkTimeline.h"

#include <functional>
#include <utility>

namespace zk::datamodel {

// Calls a function whenever a playhead has moved, as long as it lives; the playhead must outlive it.
class PlayheadWatch : private IZkPlayheadObserver
{
public:
    PlayheadWatch(IZkPlayhead *playhead, std::function<void(qint64)> moved)
        : m_playhead(playhead)
        , m_moved(std::move(moved))
    {
        m_playhead->addObserver(this);
    }
    ~PlayheadWatch() override { m_playhead->removeObserver(this); }

private:
    Q_DISABLE_COPY(PlayheadWatch)
    void onPlayheadMoved(qint64 frame) override { m_moved(frame); }

    IZkPlayhead *const m_playhead;
    const std::function<void(qint64)> m_moved;
};

} // namespace zk::datamodel
