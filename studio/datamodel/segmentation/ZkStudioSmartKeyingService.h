#pragma once

#include "../timeline/ZkObserverList.h"
#include "../timeline/ZkPlayheadWatch.h"
#include "ZkAreaIndex.h"
#include "ZkEraseMasks.h"
#include "ZkSegmentSettings.h"
#include "ZkSegments.h"
#include "ZkStrokeMap.h"

#include "ZkDataModel.h"

#include <QCoreApplication>

#include <functional>
#include <memory>
#include <optional>

class ZkStudioClip;
class ZkStudioTimeline;

namespace zk::datamodel {

class ZK_INTERFACE TrackedObserver
{
public:
    virtual ~TrackedObserver() = default;
    // A run that is under way has stored its result of that frame.
    virtual void onTrackedEvent(qint64 frame) = 0;
};

} // namespace zk::datamodel

// The segmentation of one clip for one workspace. Frames are frames of the clip. GUI thread only; a
// copy of segments() is for every thread.
//
// While it is locked (a tracking run stores its results), strokes, areas, masks and invert are not
// changed by anyone else; how they are shown may be.
//
// Reports: a change of areas is reported with the sub-kinds of what happened to them, then, as a set of
// its own, as SegmentData, because whoever hears of areas does not look further; other changes as
// SegmentData alone. The node listener comes last.
//
// Saved selections: when the last node is removed while nothing is recorded, the masks that were tracked
// are kept, to be erased with what is selected next, and tracking begins anew. An unrecorded
// clearTrackingResults() right after that, or with no other save in between, takes them back; a recorded
// one takes every saved selection away, since it can be undone.
class ZKDATAMODEL_EXPORT ZkStudioSmartKeyingService : public IZkSmartKeyingService
{
    Q_DECLARE_TR_FUNCTIONS(ZkStudioSmartKeyingService)

public:
    using NodeListener = std::function<void(qint64 frame)>;
    // The object in a box of the frame (pixels); "no mask" when the frame cannot be read.
    using ObjectFinder = std::function<zk::datamodel::EncodedMatte(qint64 frame, const QRect &box)>;

    explicit ZkStudioSmartKeyingService(ZkStudioClip *clip);
    ~ZkStudioSmartKeyingService() override;

    const zk::datamodel::Segments &segments() const { return m_segments; }
    const zk::datamodel::SegmentSettings &settings() const { return m_settings; }

    // What is to be erased as of now.
    zk::datamodel::EraseMasks eraseMasks() const;
    int savedSelectionCount() const { return m_segments.saved().size(); }
    // Takes all saved selections away. Undoable. False when there is none, or while locked.
    bool discardSavedSelections();

    // The pixels of the clip's frames that a stroke image paints. The last one is kept: an eraser is
    // tried before it is used.
    zk::datamodel::StrokeMap strokeMapOf(const QImage &strokes) const;

    // Replaces everything that is stored; no undo step, no report.
    void setState(const zk::datamodel::Segments &segments,
                  const zk::datamodel::SegmentSettings &settings);
    // The same, reported; the option flag stays. Quiet: the node listener hears nothing of it.
    void replaceState(const zk::datamodel::Segments &segments,
                      const zk::datamodel::SegmentSettings &settings,
                      bool isQuiet = false);

    // Undoable; a null node takes the frame's away.
    void changeNode(qint64 frame, const zk::datamodel::SegmentNodePtr &node, const QString &text);
    // Takes the nodes of these frames away, with their strokes and masks, as one undoable step of that
    // text, reported once. What tracking made of them stays until it is tracked again, as it does when a
    // stroke is undone. False, and nothing has changed, while locked or when none of them has a node.
    bool removeNodes(const QVector<qint64> &frames, const QString &text);
    // A run begins with this; no undo step, no report.
    void beginTracking(const QMap<qint64, zk::datamodel::TrackedMattes> &tracked);
    // The same for what a run goes back to.
    void setTracked(const QMap<qint64, zk::datamodel::TrackedMattes> &tracked);
    // Stores the result of a run that is under way: no undo step, and only tracked observers hear of it.
    void storeTracked(qint64 frame, bool isForward, const zk::datamodel::TrackedSide &side);
    // The run that is under way has come to another scene: it has no results for these frames, in that
    // direction. No undo step, and only tracked observers hear of it.
    void storeSceneCut(qint64 frame, qint64 skippedTo, bool isForward);
    // Makes all that was tracked since `before` one undo step of that text.
    void closeTracking(const QMap<qint64, zk::datamodel::TrackedMattes> &before,
                       const QString &text);

    // The first frames without a mask where the last run came to another scene, ascending.
    QVector<qint64> sceneCuts() const;
    // The frame that is most worth a correction; -1: none, or a run is under way.
    qint64 frameToCorrect() const;
    // The user has found that frame to be right: it is not named again, nor what is in doubt with it, until it
    // is tracked again. No undo step, no report.
    void setChecked(qint64 frame);

    void setLocked(bool locked) { m_isLocked = locked; }
    bool isLocked() const { return m_isLocked; }
    void setWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode) { m_workMode = mode; }
    // Called after a node was changed, undone or redone, and after its change record.
    void setNodeListener(NodeListener listener) { m_nodeListener = std::move(listener); }
    // Without one an area's object is all of the area.
    void setObjectFinder(ObjectFinder finder) { m_objectFinder = std::move(finder); }
    // -1 when it is none, or gone.
    qint64 selectedSegmentNode() const;
    bool showsAreaMasks() const { return m_showsAreaMasks; }
    bool showsAreaOutlines() const { return m_showsAreaOutlines; }
    // Not owned; an observer must be removed before it dies.
    void addTrackedObserver(zk::datamodel::TrackedObserver *observer);
    void removeTrackedObserver(zk::datamodel::TrackedObserver *observer);
    // Reports SegmentData.
    void reportChange();

    // The first time that it is on, what is there is reported when control is back in the event loop, and
    // so is from then on that another frame with other areas is shown: receivers may process events, which
    // whoever moves the playhead does not expect.
    void setEnabled(bool enabled) override;
    bool isEnabled() const override { return m_isEnabled; }
    ZKSMARTKEYING::ZkSegmentWorkMode workMode() const override { return m_workMode; }
    int maskItemCount() const override;
    bool isTracked() const override;
    // A mask has something in it when any pixel is not 0, so that faint remains can be erased too.
    bool isEraseEnabled(qint64 frame) const override;
    bool overlapsMask(const QImage &strokes, qint64 frame) const override;
    int minimumPenWidth(const QSize &shownSize) const override;
    // Takes invert back, too; how masks are shown stays. Refused while locked.
    void reset() override;

    void setPreviewType(ZKSMARTKEYING::ZkPreviewType type) override;
    ZKSMARTKEYING::ZkPreviewType previewType() const override;
    void setMaskRegionColor(const QColor &color) override;
    QColor maskRegionColor() const override { return m_settings.overlayColour; }
    void setMaskRegionAlpha(int alpha) override;
    int maskRegionAlpha() const override { return m_settings.overlayAlpha; }
    void setMaskInverted(bool inverted) override;
    bool isMaskInverted() const override { return m_settings.invert; }

    bool setNodeResult(qint64 node, const ZkSegmentResultPtr &result) override;
    void setOptionFlag(bool isSingleObject) override;
    int segmentCount() const override { return m_segments.nodes().size(); }
    qint64 segmentNodeAt(int index) const override;
    int segmentIndexAt(qint64 frame) const override;
    bool selectSegmentNode(qint64 frame) override;
    bool removeSegmentNode(qint64 node) override;
    // Nothing happens while locked.
    void clearTrackingResults() override;
    ZkSegmentResultPtr nodeResult(qint64 node) const override;

    int addArea(const QRectF &rect) override;
    bool removeArea(qint64 id) override;
    bool updateArea(qint64 id, const QRectF &rect) override;
    int areaCount() const override;
    QRectF areaRect(int area) const override { return areaRectAt(area); }
    QRectF areaRectAt(int index) const override;
    qint64 findAreaIdAt(double x, double y) const override;
    // Initially the masks are shown and the outlines are not.
    void setRenderAllAreaMasks(bool masks, bool outlines) override;

private:
    Q_DISABLE_COPY(ZkStudioSmartKeyingService)
    class NodeItem;
    class TrackItem;
    class InvertItem;
    class SegmentsItem;

    // What is to be told when the step that is being done is over.
    struct Notice
    {
        bool isDue = false;
        bool hasAreas = false;
        QVector<qint64> nodes;
    };
    // The unrecorded removals that are under way, from the first one on.
    struct Departure
    {
        zk::datamodel::Segments before;
        quint64 change = 0; // nothing else has happened as long as it is the last one
    };

    ZkStudioTimeline *timeline() const;
    template<typename T>
    void changeSetting(T zk::datamodel::SegmentSettings::*setting, T value);
    void restoreNode(qint64 frame, const zk::datamodel::SegmentNodePtr &node, bool isQuiet = false);
    void restoreSegments(const zk::datamodel::Segments &segments, bool isQuiet = false);
    void pushSegments(const zk::datamodel::Segments &segments, const QString &text);
    void keepSelection();
    void reportAreas(const zk::datamodel::AreaDifference &difference);
    void tellLater();
    void tell();

    qint64 shownFrame() const;
    zk::datamodel::Areas areasOf(qint64 frame) const;
    const zk::datamodel::AreaIndex &shownAreas() const;
    void watchShownFrame();
    void onShownFrameChanged();
    void reportShownFrame();
    zk::datamodel::EncodedMatte objectIn(const QRectF &rect) const;
    void changeShownNode(const zk::datamodel::SegmentNodePtr &node, const QString &text);
    zk::datamodel::AreaPtr shownArea(qint64 id) const;
    QRectF apartFromOthers(const QRectF &rect, qint64 id) const;
    zk::datamodel::EncodedMatte underAreas(qint64 frame) const;

    ZkStudioClip *const m_clip;
    zk::datamodel::Segments m_segments;
    zk::datamodel::SegmentSettings m_settings;
    bool m_isEnabled = false;
    bool m_isLocked = false;
    ZKSMARTKEYING::ZkSegmentWorkMode m_workMode = ZKSMARTKEYING::EditingMode;
    NodeListener m_nodeListener;
    ObjectFinder m_objectFinder;
    Notice m_notice;
    quint64 m_change = 0; // counts changes of m_segments
    QVector<qint64> m_sceneCuts; // of the last run, as they came
    struct Doubt
    {
        quint64 change;
        qint64 frame;
    };
    mutable std::optional<Doubt> m_doubt; // as of that change
    QMap<qint64, float> m_checked; // with the confidence then
    std::optional<Departure> m_departure;
    bool m_canTakeSaveBack = false; // the last saved selection
    qint64 m_selectedNode = -1;
    bool m_showsAreaMasks = true;
    bool m_showsAreaOutlines = false;
    mutable zk::datamodel::AreaIndex m_shownAreas; // follows when it is asked for
    mutable zk::datamodel::StrokeMap m_strokeMap; // of the strokes with that key
    mutable qint64 m_strokesKey = 0;
    std::unique_ptr<zk::datamodel::PlayheadWatch> m_playheadWatch;
    QObject m_receiver; // of what is reported later
    bool m_isFrameDue = false;
    zk::datamodel::ObserverList<zk::datamodel::TrackedObserver> m_trackedObservers;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};
