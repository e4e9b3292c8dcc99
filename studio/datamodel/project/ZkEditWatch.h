// Private to the data model: what is being done to a clip in an open workspace.
#pragma once

#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "ZkProjectClip.h"
#include "ZkProjectSnapshot.h"

#include "ZkDataModel.h"

#include <functional>

namespace zk::datamodel {

// Effects and segmentations of a clip as a project keeps them.
QVector<ProjectSnapshot::Effect> effectsOf(const ZkStudioClip &clip);
ProjectSnapshot::Segmentation segmentationOf(const ZkStudioClip &clip,
                                             ZKSMARTKEYING::ZkSmartKeyingBusinessType type);

// Equal for drafts whose strokes, masks, tracking results and looks are the same. How masks are shown
// does not count, nor whether an effect is switched on: painting switches it off.
QByteArray fingerprintOf(const ProjectSnapshot::Draft &draft);

// Watches the edit timeline of a workspace, which must outlive it. A draft of that workspace that the clip
// has is put there first, as one undo step. GUI thread only.
class EditWatch : private IZkTimelineEventObserver, private TrackedObserver
{
public:
    // Strokes, masks or tracking results may have changed.
    using Listener = std::function<void()>;

    EditWatch(const ProjectClipPtr &clip, ZkStudioTimeline *edit, const Listener &listener);
    ~EditWatch() override;

    const ProjectClip *clip() const { return m_clip.get(); }
    // The clip's drafts as they are now: those of other workspaces, and that of this one when it differs
    // from what was applied.
    QVector<ProjectSnapshot::Draft> drafts() const;
    // The same without that of this one.
    QVector<ProjectSnapshot::Draft> otherDrafts() const;

private:
    Q_DISABLE_COPY(EditWatch)
    ProjectSnapshot::Draft draftOf(const ZkStudioClip &clip) const;
    void restore(const ProjectSnapshot::Draft &draft);
    void onTimelineChangedEvent(const ZkTimelineChanges &) override { m_listener(); }
    void onTrackedEvent(qint64) override { m_listener(); }

    const ProjectClipPtr m_clip;
    ZkStudioTimeline *const m_edit;
    const ZKSMARTKEYING::ZkSmartKeyingBusinessType m_type;
    const Listener m_listener;
};

} // namespace zk::datamodel
