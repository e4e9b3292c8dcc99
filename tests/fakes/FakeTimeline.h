// A timeline with its playhead and its history.
#pragma once

#include "FakeUndoRedo.h"

#include "datamodel/ZkTimeline.h"

namespace zk::fake {

class Playhead : public IZkPlayhead
{
public:
    explicit Playhead(const char *name)
        : m_name(QLatin1String(name))
    { }
    qint64 position() const override { return m_position; }
    void setPosition(qint64 frame) override { m_position = frame; }
    ZkRange<qint64> frameRange() const override { return m_range; }
    void setFrameRange(const ZkRange<qint64> &range) override
    {
        note("playhead.setFrameRange", m_name, range.minimum, range.maximum);
        m_range = range;
    }
    void addObserver(IZkPlayheadObserver *) override { }
    void removeObserver(IZkPlayheadObserver *) override { }
    QString name() const { return m_name; }

private:
    QString m_name;
    qint64 m_position = 0;
    ZkRange<qint64> m_range;
};

class Timeline : public IZkTimeline
{
public:
    explicit Timeline(const char *name)
        : head(name)
    {
        undo.onEventsResumed = [this] { flush(); };
    }
    ZkTimelineHandle handle() const override { return 77; }
    IZkPlayhead *playhead() const override { return &head; }
    ZkRange<qint64> playheadRange() const override { return {0, 249}; }
    IZkUndoRedoService *undoRedoService() const override { return &undo; }
    void addEventObserver(IZkTimelineEventObserver *who) override { m_observers.add(who); }
    void removeEventObserver(IZkTimelineEventObserver *who) override { m_observers.drop(who); }
    void report(const ZkTimelineChanges &changes)
    {
        m_collected.add(changes);
        if (!undo.arePaused())
            flush();
    }

    mutable Playhead head;
    mutable UndoRedoService undo;

private:
    void flush()
    {
        const ZkTimelineChanges changes = std::exchange(m_collected, ZkTimelineChanges());
        const auto listeners = m_observers;
        for (IZkTimelineEventObserver *observer : listeners) {
            if (!changes.isEmpty())
                observer->onTimelineChangedEvent(changes);
        }
    }

    Observers<IZkTimelineEventObserver> m_observers {"timeline"};
    ZkTimelineChanges m_collected;
};

} // namespace zk::fake
