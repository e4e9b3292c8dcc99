#pragma once

#include "../timeline/ZkObserverList.h"
#include "../timeline/ZkStudioTimeline.h"
#include "ZkApplyRun.h"
#include "ZkEditTime.h"
#include "ZkNodeEditor.h"
#include "ZkNodeThumbnails.h"
#include "ZkTrackingRun.h"

#include "ZkDataModel.h"

#include <QCoreApplication>
#include <QObject>

#include <memory>
#include <vector>

class IZkMediaPlayer;

namespace zk::datamodel {
class PlayerFeedback;
}

// Edits a copy of a clip of a project timeline, which must outlive the controller, with the real engine.
//
// A tracking run stores its results as they come; they become one undo step, "Track", when the run ends
// or is stopped. While it runs, strokes, undo, redo and other changes of the masks are refused. In the AI
// erasing workspace every node is a seed, wherever the run is started; of several objects a run replaces
// all that was tracked before.
//
// apply() makes the clip look like the edit clip, as one undo step of the project, "Smart Cutout": its
// matte track (frames without a mask become transparent, which is logged), its strokes and tracking
// results, so that editing can go on from there, and its cutout effect (the plain one if it has none).
// An edit clip without any mask takes the cutout away. The AI erasing workspace gives the clip only
// strokes and tracking results.
class ZkStudioEditController : public IZkSmartKeyingEditController
{
    Q_DECLARE_TR_FUNCTIONS(ZkStudioEditController)

public:
    ZkStudioEditController();
    ~ZkStudioEditController() override;

    void addObserver(IZkSmartKeyingEditControllerObserver *observer) override;
    void removeObserver(IZkSmartKeyingEditControllerObserver *observer) override;

    bool initialise(IZkClip *clip,
                    IZkMediaPlayer *player,
                    qint64 *initialFrame,
                    ZKSMARTKEYING::ZkSmartKeyingBusinessType type) override;
    IZkClip *editClip() const override;
    IZkTimeline *editTimeline() const override { return m_timeline.get(); }

    // Tracking begins and ends its mode itself: TrackingMode is ignored here, and so is every mode
    // while a run is under way.
    void switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode) override;

    bool addMask(qint64 frame, const QImage &strokes) override;
    bool subtractMask(qint64 frame, const QImage &strokes) override;
    bool eraseMask(qint64 frame, const QImage &strokes) override;
    bool setMatte(qint64 frame, const QImage &matte) override;

    int startTracking(qint64 frame,
                      ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                      ZKSMARTKEYING::ZkSegmentToTrackType type) override;
    void stopTracking() override;

    // Ignored while an apply is under way.
    void apply() override;
    void cancelApply() override;

    bool deleteSegment(qint64 frame) override;
    QImage segmentThumbnail(int index) const override;
    bool registerEditTime(qint64 begin, qint64 end) override
    {
        return m_editTime.registerMicroseconds(begin, end);
    }
    bool changeEditTime(qint64 begin, qint64 end) override
    {
        return m_editTime.changeMicroseconds(begin, end);
    }
    bool changeEditTimeCns(qint64 begin, qint64 end) override
    {
        return m_editTime.change(begin, end);
    }
    bool getEditTime(qint64 &begin, qint64 &end) const override
    {
        return m_editTime.getMicroseconds(begin, end);
    }
    void setUndoManager(IZkUndoRedoService *edit, IZkUndoRedoService *project) override
    {
        m_editHistory = edit;
        m_projectHistory = project;
    }
    // As they were set; null: none.
    IZkUndoRedoService *editHistory() const { return m_editHistory; }
    IZkUndoRedoService *projectHistory() const { return m_projectHistory; }

    void releaseMediaPlayer() override;

private:
    Q_DISABLE_COPY(ZkStudioEditController)
    using Stroke = zk::datamodel::NodeEditor::Stroke;
    using Outcome = zk::datamodel::NodeEditor::Outcome;

    ZkStudioSmartKeyingService *service() const { return m_timeline->shownService(); }
    bool canEdit(qint64 frame) const;
    bool applyStroke(qint64 frame, const QImage &strokes, Stroke stroke, const QString &text);
    bool commit(qint64 frame, const Outcome &outcome, const QString &text);
    void notifyNodeChanged(qint64 frame);

    bool isTracking() const { return m_tracking != nullptr; }
    void launchTracking(const zk::datamodel::Segments &seeds,
                        const QVector<zk::datamodel::TrackingLeg> &legs);
    void onTracked(quint64 serial, const zk::datamodel::TrackedFrame &tracked);
    void onTrackingFinished(quint64 serial, const QString &error);
    void endTracking();
    void enableCutoutEffects();

    void onApplyProgress(quint64 serial, int percent);
    void onApplyFinished(quint64 serial, const zk::datamodel::ApplyResult &result);
    void notifySaveFinished(int result);

    void abandonRuns();
    void reapRuns();

    ZkStudioClip *m_projectClip = nullptr;
    ZKSMARTKEYING::ZkSmartKeyingBusinessType m_type = ZKSMARTKEYING::SmartCutout;
    zk::datamodel::PlayerFeedback *m_player = nullptr; // null: nobody to tell
    zk::datamodel::ObserverList<IZkSmartKeyingEditControllerObserver> m_observers;
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    std::unique_ptr<zk::datamodel::NodeEditor> m_editor;
    QMap<qint64, zk::datamodel::TrackedMattes> m_trackedBefore; // the run
    mutable zk::datamodel::NodeThumbnails m_thumbnails;
    zk::datamodel::EditTime m_editTime;
    IZkUndoRedoService *m_editHistory = nullptr;
    IZkUndoRedoService *m_projectHistory = nullptr;
    bool m_hasTracked = false; // the run has brought something
    // Workers call into the thread of this object; gone with the controller, so are their calls.
    std::unique_ptr<QObject> m_context;
    std::unique_ptr<zk::datamodel::TrackingRun> m_tracking;
    std::unique_ptr<zk::datamodel::ApplyRun> m_applying;
    // Runs that were stopped and whose workers may still be ending.
    std::vector<std::unique_ptr<zk::datamodel::TrackingRun>> m_oldTrackings;
    std::vector<std::unique_ptr<zk::datamodel::ApplyRun>> m_oldApplyings;
};
