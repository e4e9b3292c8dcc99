#pragma once

#include "ZkSegmentMarks.h"
#include "ZkTimelineScale.h"

#include "ZkTimelineView.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QElapsedTimer>
#include <QPointer>

// Shows one timeline, of the project or of a workspace: its playhead, and the nodes and the tracked
// range of the segmentation that it shows. Owns what is particular to the view, that is the scale and
// the selection of nodes.
//
// A move of the playhead brings it into sight, unless the user scrolled it away while it runs.
class ZKTIMELINEVIEW_EXPORT ZkStudioTimelinePresenter : public ZTimelinePresenter,
                                                        private IZkTimelineEventObserver,
                                                        private IZkPlayheadObserver,
                                                        private zk::datamodel::TrackedObserver
{
    Q_OBJECT

public:
    using SelectionMode = zk::timeline::NodeSelection::Mode;

    explicit ZkStudioTimelinePresenter(QObject *parent = nullptr);
    ~ZkStudioTimelinePresenter() override;

    // Fits it. Not owned; it may die first, but setTimeline(nullptr) tells the view about it. Null: nothing
    // is shown.
    void setTimeline(ZkStudioTimeline *timeline);
    ZkStudioTimeline *timeline() const { return ZkStudioTimeline::fromHandle(m_handle); }

    void fitTimeline() override;
    void setZoomSlider(ZkZoomSlider *slider) override;
    void removeSelectedSmartKeyingNode() override;

    const zk::timeline::TimelineScale &scale() const { return m_scale; }
    void setViewWidth(double width);
    // About that x of the view.
    void zoomBy(double factor, double x);
    // By the user.
    void scrollTo(double offset);

    qint64 position() const;
    // Clamped to the clip; refused while tracking.
    void seek(qint64 frame);
    // To the node before (direction -1) or after (1) the playhead, and selects it. Stays where it is when
    // there is none.
    void goToNode(int direction, SelectionMode mode);
    // The tracked frame that is most worth a correction, where the segmentation is being edited; -1: none, or
    // while tracking.
    qint64 frameToCorrect() const { return isTracking() ? -1 : m_marks.frameToCorrect(); }
    // Stays where it is when there is none. Whoever is there already has seen that it is right, and goes on to
    // the next one.
    void goToFrameToCorrect();
    double frameRate() const;
    bool isTracking() const;

    const zk::timeline::SegmentMarks &marks() const { return m_marks; }
    const zk::timeline::NodeSelection &selection() const { return m_selection; }
    void selectNode(qint64 frame, SelectionMode mode);
    void selectAllNodes();
    void clearSelection();

Q_SIGNALS:
    void sigTimelineChanged(); // another timeline, or another clip on it
    void sigScaleChanged(); // or scrolled
    void sigPlayheadMoved(qint64 from, qint64 to);
    void sigMarksChanged(); // nodes or tracked range
    void sigFrameTracked(qint64 frame); // by a run that is under way
    void sigSelectionChanged();

private:
    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override;
    void onPlayheadMoved(qint64 frame) override;
    void onTrackedEvent(qint64 frame) override;

    void attach();
    void detach();
    ZkStudioSmartKeyingService *service() const;
    bool takeClip();
    void readMarks();
    void follow(qint64 frame);
    void reportScale();
    void setZoomValue(int value);

    ZkTimelineHandle m_handle = 0; // of a timeline that may be gone
    // Of the clip that the view knows, with the frame of the file that it begins at.
    QString m_mediaPath;
    qint64 m_inFrame = 0;
    zk::timeline::TimelineScale m_scale;
    zk::timeline::SegmentMarks m_marks;
    zk::timeline::NodeSelection m_selection;
    qint64 m_position = 0; // that the view knows
    bool m_isScrolledAway = false;
    QElapsedTimer m_lastMove;
    QPointer<ZkZoomSlider> m_slider;
};
