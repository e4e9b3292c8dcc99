#pragma once

#include "../timeline/ZkObserverList.h"
#include "ZkSegmentSettings.h"
#include "ZkSegments.h"

#include "ZkDataModel.h"

#include <QCoreApplication>

#include <functional>
#include <memory>

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
// While it is locked (a tracking run stores its results), strokes, masks and invert are not changed by
// anyone else; how they are shown may be.
class ZKDATAMODEL_EXPORT ZkStudioSmartKeyingService : public IZkSmartKeyingService
{
    Q_DECLARE_TR_FUNCTIONS(ZkStudioSmartKeyingService)

public:
    using NodeListener = std::function<void(qint64 frame)>;

    explicit ZkStudioSmartKeyingService(ZkStudioClip *clip);
    ~ZkStudioSmartKeyingService() override;

    const zk::datamodel::Segments &segments() const { return m_segments; }
    const zk::datamodel::SegmentSettings &settings() const { return m_settings; }

    // Replaces everything that is stored; no undo step, no report.
    void setState(const zk::datamodel::Segments &segments,
                  const zk::datamodel::SegmentSettings &settings);

    // Undoable; a null node takes the frame's away.
    void changeNode(qint64 frame, const zk::datamodel::SegmentNodePtr &node, const QString &text);
    // Takes the nodes of these frames away, with their strokes and masks, as one undoable step of that
    // text, reported once. What tracking made of them stays until it is tracked again, as it does when a
    // stroke is undone. False, and nothing has changed, while locked or when none of them has a node.
    bool removeNodes(const QVector<qint64> &frames, const QString &text);
    // Stores the result of a run that is under way: no undo step, and only tracked observers hear of it.
    void storeTracked(qint64 frame, bool isForward, const zk::datamodel::TrackedSide &side);
    // Makes all that was tracked since `before` one undo step of that text.
    void closeTracking(const QMap<qint64, zk::datamodel::TrackedMattes> &before,
                       const QString &text);

    void setLocked(bool locked) { m_isLocked = locked; }
    bool isLocked() const { return m_isLocked; }
    void setWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode) { m_workMode = mode; }
    // Called after a node was changed, undone or redone, and after its change record.
    void setNodeListener(NodeListener listener) { m_nodeListener = std::move(listener); }
    // Not owned; an observer must be removed before it dies.
    void addTrackedObserver(zk::datamodel::TrackedObserver *observer);
    void removeTrackedObserver(zk::datamodel::TrackedObserver *observer);
    // Reports SegmentData.
    void reportChange();

    void setEnabled(bool enabled) override { m_isEnabled = enabled; }
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

private:
    Q_DISABLE_COPY(ZkStudioSmartKeyingService)
    class NodeItem;
    class TrackItem;
    class InvertItem;

    ZkStudioTimeline *timeline() const;
    template<typename T>
    void changeSetting(T zk::datamodel::SegmentSettings::*setting, T value);
    void restoreNode(qint64 frame, const zk::datamodel::SegmentNodePtr &node);

    ZkStudioClip *const m_clip;
    zk::datamodel::Segments m_segments;
    zk::datamodel::SegmentSettings m_settings;
    bool m_isEnabled = false;
    bool m_isLocked = false;
    ZKSMARTKEYING::ZkSegmentWorkMode m_workMode = ZKSMARTKEYING::EditingMode;
    NodeListener m_nodeListener;
    zk::datamodel::ObserverList<zk::datamodel::TrackedObserver> m_trackedObservers;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};
