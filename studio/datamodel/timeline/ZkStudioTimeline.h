#pragma once

#include "../undo/ZkStudioUndoRedoService.h"
#include "ZkObserverList.h"
#include "ZkStudioClip.h"
#include "ZkStudioPlayhead.h"

#include "ZkDataModel.h"

#include <QSize>

#include <memory>

namespace zk::engine {
class EngineBackends;
}

// The shape of a timeline's frames.
struct ZkTimelineFormat
{
    QSize frameSize; // pixels
    int frameRateNum = 25; // frames per second = num / den
    int frameRateDen = 1;
};

// One clip with a playhead and an undo history of its own: either a timeline of the project, which
// shows the clip as it was applied last, or the edit timeline of a workspace, which shows the masks of
// that workspace's segmentation service as they are being made. GUI thread only; for other threads
// there is zk::datamodel::RenderSnapshot.
class ZKDATAMODEL_EXPORT ZkStudioTimeline : public IZkTimeline
{
public:
    explicit ZkStudioTimeline(const ZkTimelineFormat &format);
    ~ZkStudioTimeline() override;

    // A timeline of the project with the whole file as its clip, in the file's own format. A still
    // picture is a clip of one frame. Null, with a sentence for the user, when it cannot be read.
    static std::unique_ptr<ZkStudioTimeline> fromMediaFile(const QString &path, QString *error);
    // Null when no timeline has that handle (any more).
    static ZkStudioTimeline *fromHandle(ZkTimelineHandle handle);

    // Null until one is set. Owned by the timeline; it must have been made for this timeline.
    ZkStudioClip *clip() const;
    void setClip(std::unique_ptr<ZkStudioClip> clip);

    const ZkTimelineFormat &format() const { return m_format; }
    QSize frameSize() const { return m_format.frameSize; }
    double frameRate() const { return double(m_format.frameRateNum) / m_format.frameRateDen; }
    qint64 frameCount() const;

    // What workspaces that are opened on its clip from now on segment and track with; those that are open
    // keep theirs. Null: the built-in engine, as initially.
    void setEngine(std::shared_ptr<const zk::engine::EngineBackends> engine);
    const std::shared_ptr<const zk::engine::EngineBackends> &engine() const { return m_engine; }

    // Makes it the edit timeline of that workspace. Initially it is a timeline of the project.
    void setWorkspace(ZKSMARTKEYING::ZkSmartKeyingBusinessType type);
    bool isEditTimeline() const { return m_isEditTimeline; }
    // The service whose masks are shown; null on a timeline of the project.
    ZkStudioSmartKeyingService *shownService() const;

    // Tells the observers, unless events are paused; while an undo step is being done, right after it.
    void reportChanges(const ZkTimelineChanges &changes);
    // How many times the observers were told of changes; while they are being told, this time included.
    quint64 deliveries() const { return m_deliveries; }

    ZkTimelineHandle handle() const override { return m_handle; }
    IZkPlayhead *playhead() const override;
    ZkRange<qint64> playheadRange() const override;
    ZkStudioUndoRedoService *undoRedoService() const override { return m_undo.get(); }
    void addEventObserver(IZkTimelineEventObserver *observer) override;
    void removeEventObserver(IZkTimelineEventObserver *observer) override;

private:
    Q_DISABLE_COPY(ZkStudioTimeline)

    const ZkTimelineFormat m_format;
    const ZkTimelineHandle m_handle;
    bool m_isEditTimeline = false;
    quint64 m_deliveries = 0;
    ZKSMARTKEYING::ZkSmartKeyingBusinessType m_workspace = ZKSMARTKEYING::SmartCutout;
    zk::datamodel::ObserverList<IZkTimelineEventObserver> m_observers;
    std::unique_ptr<ZkStudioPlayhead> m_playhead;
    std::unique_ptr<ZkStudioUndoRedoService> m_undo;
    std::unique_ptr<ZkStudioClip> m_clip;
    std::shared_ptr<const zk::engine::EngineBackends> m_engine; // never null
};
