#include "ZkProjectHistory.h"

#include "../timeline/ZkStudioTimeline.h"

#include <QScopedValueRollback>

namespace zk::datamodel {

// A step of a clip's own history. It was made before it is pushed.
class ProjectHistory::ClipStep : public IZkUndoRedoItem
{
public:
    ClipStep(ProjectHistory *history, const ProjectClipPtr &clip, const QString &text)
        : m_history(history)
        , m_clip(clip)
        , m_text(text)
    { }

    void redo() override
    {
        if (m_isDone)
            step(&ZkStudioUndoRedoService::redo);
        m_isDone = true;
    }
    void undo() override { step(&ZkStudioUndoRedoService::undo); }
    QString description() const override { return m_text; }

private:
    void step(bool (ZkStudioUndoRedoService::*operation)())
    {
        const QScopedValueRollback<bool> stepping(m_history->m_isStepping, true);
        (m_clip->timeline()->undoRedoService()->*operation)();
    }

    ProjectHistory *const m_history;
    const ProjectClipPtr m_clip;
    const QString m_text;
    bool m_isDone = false;
};

class ProjectHistory::Watch : private IZkUndoRedoServiceEventObserver,
                              private IZkTimelineEventObserver
{
public:
    Watch(ProjectHistory *history, const ProjectClipPtr &clip)
        : m_history(history)
        , m_clip(clip)
    {
        note();
        service()->addObserver(this);
        clip->timeline()->addEventObserver(this);
    }
    ~Watch() override
    {
        service()->removeObserver(this);
        m_clip->timeline()->removeEventObserver(this);
    }

    ZkStudioUndoRedoService *service() const { return m_clip->timeline()->undoRedoService(); }

private:
    void note()
    {
        m_steps = service()->undoStepCount();
        m_state = service()->stateId();
    }

    void onUndoRedoChangedEvent() override
    {
        const int steps = m_steps;
        const quint64 state = m_state;
        note();
        if (m_history->m_isStepping || (steps == m_steps && state == m_state))
            return;
        if (m_steps == steps + 1 && !service()->canRedo()) {
            m_history->m_service.push(new ClipStep(m_history, m_clip, service()->undoText()));
            return;
        }
        m_history->clear();
        m_history->m_listener.modified();
    }

    void onTimelineChangedEvent(const ZkTimelineChanges &) override
    {
        m_history->m_listener.clipChanged(m_clip.get());
    }

    ProjectHistory *const m_history;
    const ProjectClipPtr m_clip;
    int m_steps = 0;
    quint64 m_state = 0;
};

ProjectHistory::ProjectHistory(const Listener &listener)
    : m_listener(listener)
    , m_service([](const ZkTimelineChanges &) {})
{
    m_service.addObserver(this);
}

ProjectHistory::~ProjectHistory()
{
    m_service.removeObserver(this);
}

void ProjectHistory::watch(const ProjectClipPtr &clip)
{
    m_watches.insert(clip.get(), std::make_shared<Watch>(this, clip));
}

void ProjectHistory::unwatch(const ProjectClip *clip)
{
    m_watches.remove(clip);
}

void ProjectHistory::clear()
{
    m_service.clearHistory();
    const QScopedValueRollback<bool> stepping(m_isStepping, true);
    const auto watches = m_watches.values();
    for (const std::shared_ptr<Watch> &watch : watches)
        watch->service()->clearHistory();
}

} // namespace zk::datamodel
