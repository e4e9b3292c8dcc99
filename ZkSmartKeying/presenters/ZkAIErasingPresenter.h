// Presenter of one AI erasing workspace.
#pragma once

#include "ZkSmartKeyingPresenter.h"

#include <memory>

class ZkAIErasingCropSelectorPresenter;
class ZkAIErasingPresenterPrivate;

// The workspace that takes objects out of a clip: they are marked by areas or a brush, tracked through
// the clip, and erased by a task of the host. Strokes, the player, tracking and the history are those of
// the base with business type 2.
//
// A segment node is a frame with a mask on it; it is named by that frame.
//
// Owns the presenter of the areas. Views hold this presenter as a plain pointer and must die first. GUI
// thread only.
class ZKSMARTKEYING_EXPORT ZkAIErasingPresenter : public ZkSmartKeyingPresenter
{
    Q_OBJECT

public:
    enum RemoveType {
        StoppedRemoveType = 0, // the user has stopped tracking half-way
        DefaultRemoveType = 1,
    };
    Q_ENUM(RemoveType)

    // Test isInitSuccessful() before anything else, as with the base.
    explicit ZkAIErasingPresenter(IZkClip *clip, QObject *parent = nullptr);
    ~ZkAIErasingPresenter() override;

    // One undoable step: no masks, tracking results and areas. A tracking run is stopped first.
    void reset() override;
    // Puts the tracked masks aside, so that the workspace starts empty, and leaves one step in the
    // history, by which they are taken back and tracked again. That step is redone as it is pushed:
    // without setHasTracked(true) before, the masks come back at once and tracking begins.
    void save();
    // Throws masks and tracking results away; it cannot be undone.
    void discard();
    // Both ways from the current frame. Reports sigBeginTracking also when tracking was refused, which
    // sigPrompt tells.
    void beginTracking();

    RemoveType removeType() const;
    void setRemoveType(RemoveType type);
    // Whether tracking results are in place; kept by who shows the tracking.
    bool hasTracked() const;
    void setHasTracked(bool tracked);
    // Of the last tracking run, in milliseconds; kept by who shows the tracking.
    qint64 trackingDuration() const;
    void setTrackingDuration(qint64 duration);
    // Segment nodes, as of the last sigSmartKeyingSegmentChanged.
    int getErasingSegmentCount() const;
    bool hasErasingSegment() const;

    QString getFileType() const; // "image" or "video"
    bool isImageClip() const;
    bool isFrameMovingMode() const;
    bool checkNetworkConnection() const;
    // The presenter of the areas; lives as long as this one.
    ZkAIErasingCropSelectorPresenter *cropSelectorPresenter() const;

    // Handed to the edit controller as they are: see its operations for units and failures.
    bool registerEditTime(qint64 begin, qint64 end) const;
    bool changeEditTime(qint64 begin, qint64 end) const;
    bool changeEditTimeCns(qint64 begin, qint64 end) const;
    bool getEditTime(qint64 &begin, qint64 &end) const;
    void setUndoManager(IZkUndoRedoService *first, IZkUndoRedoService *second);
    // The time code of a frame that fits into 32 bits.
    QString frame2Time(qint64 frame) const;

    // Back to the translucent green; not undoable.
    void initMaskRegionColor();
    void trackClickEvent(const QString &buttonName);

Q_SIGNALS:
    void sigBeginTracking();
    void sigNodeChangedSync(qint64 frame); // the step of a save has put the node's result back
    // The tracking results are gone; 10 ms later, when everything has settled.
    void sigResetAllData();
    void sigNeedReloadAllData(); // emitted by the views

private:
    void updateErasingSegmentCount();

    RemoveType m_removeType = DefaultRemoveType;
    std::unique_ptr<ZkAIErasingPresenterPrivate> d_ptr;
    Q_DECLARE_PRIVATE(ZkAIErasingPresenter)
    Q_DISABLE_COPY(ZkAIErasingPresenter)
};
