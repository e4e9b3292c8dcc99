#include "ZkMediaChange.h"

#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "../timeline/ZkStudioTimeline.h"
#include "ZkProject.h"

#include <QDir>

namespace zk::datamodel {

namespace {

class MediaChangeItem : public IZkUndoRedoItem
{
public:
    MediaChangeItem(Project *project, ProjectClip *clip, qint64 mediaId, qint64 inFrame)
        : m_project(project)
        , m_clip(clip)
        , m_after {mediaId, inFrame, {}}
        , m_before {clip->mediaId(), clip->clip()->inFrame(), service()->segments()}
    {
        m_after.segments.setSingleObject(m_before.segments.isSingleObject());
    }

    void redo() override { show(m_after); }
    void undo() override { show(m_before); }
    QString description() const override { return Project::tr("Erase objects"); }

private:
    struct State
    {
        qint64 mediaId;
        qint64 inFrame;
        Segments segments; // of erasing
    };

    ZkStudioSmartKeyingService *service() const
    {
        return m_clip->clip()->studioService(ZKSMARTKEYING::AIErasing);
    }

    void show(const State &state)
    {
        m_clip->setMedia(*m_project->findMedia(state.mediaId), state.inFrame);
        service()->setState(state.segments, service()->settings());
        m_project->undoRedoService()->runAfterStep(
            [project = m_project, clip = m_clip] { Q_EMIT project->clipChanged(clip); });
    }

    Project *const m_project;
    ProjectClip *const m_clip; // lives as long as the history
    State m_after;
    const State m_before;
};

} // namespace

bool replaceErasedMedia(
    Project *project, ProjectClip *clip, const MediaEntry &probed, qint64 inFrame, QString *error)
{
    MediaEntry needed;
    needed.info = clip->clip()->media();
    needed.info.frameCount = inFrame + clip->clip()->frameCount();
    QString reason;
    if (!fitsInPlaceOf(needed, probed, &reason)) {
        *error = Project::tr("%1 does not fit: %2")
                     .arg(QDir::toNativeSeparators(probed.info.path), reason);
        return false;
    }
    ZkStudioUndoRedoService *history = project->undoRedoService();
    history->beginMacro(Project::tr("Erase objects"));
    const qint64 mediaId = project->importMedia(probed);
    history->push(new MediaChangeItem(project, clip, mediaId, inFrame));
    history->endMacro();
    return true;
}

} // namespace zk::datamodel
