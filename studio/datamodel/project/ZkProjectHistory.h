// Private to the data model: one undo history over the timelines of all clips of a project.
#pragma once

#include "../undo/ZkStudioUndoRedoService.h"
#include "ZkProjectClip.h"

#include <QHash>

#include <functional>

namespace zk::datamodel {

// Every step that is made on the timeline of a watched clip becomes a step here, which steps that
// timeline's own history.
class ProjectHistory : private IZkUndoRedoServiceEventObserver
{
public:
    struct Listener
    {
        std::function<void()> changed; // the history
        std::function<void(ProjectClip *)> clipChanged;
        std::function<void()> modified; // by somebody who stepped past the history
    };

    explicit ProjectHistory(const Listener &listener);
    ~ProjectHistory() override;

    ZkStudioUndoRedoService *service() { return &m_service; }
    // A watched clip must be unwatched before it dies.
    void watch(const ProjectClipPtr &clip);
    void unwatch(const ProjectClip *clip);
    // Clips have no histories of their own afterwards.
    void clear();

private:
    class Watch;
    class ClipStep;

    void onUndoRedoChangedEvent() override { m_listener.changed(); }

    const Listener m_listener;
    ZkStudioUndoRedoService m_service;
    QHash<const ProjectClip *, std::shared_ptr<Watch>> m_watches;
    bool m_isStepping = false; // what clips report is our own doing
};

} // namespace zk::datamodel
