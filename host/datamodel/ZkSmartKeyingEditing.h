// Segmentation of one clip: what is stored (the service) and what is done (the edit controller).
#pragma once

#include "../ZkGlobal.h"
#include "ZkSegmentResult.h"
#include "ZkSmartKeyingTypes.h"

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSize>

class IZkClip;
class IZkMediaPlayer;
class IZkTimeline;
class IZkUndoRedoService;

// Strokes, masks and tracking results of one clip for one workspace, and how they are shown.
// GUI thread only. Every change reports a kind-13 record on the clip's timeline.
class ZK_INTERFACE IZkSmartKeyingService
{
public:
    virtual ~IZkSmartKeyingService() = default;

    // Strokes are accepted only while the service is on. Initially off.
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;
    virtual ZKSMARTKEYING::ZkSegmentWorkMode workMode() const = 0;

    // Frames that carry strokes or a given matte.
    virtual int maskItemCount() const = 0;
    // Whether tracking results exist.
    virtual bool isTracked() const = 0;
    // Whether the frame has a mask with anything in it.
    virtual bool isEraseEnabled(qint64 frame) const = 0;
    // Whether the painted pixels of the stroke image (see IZkSmartKeyingEditController) meet the
    // frame's mask.
    virtual bool overlapsMask(const QImage &strokes, qint64 frame) const = 0;
    // The width in widget pixels that covers one whole source pixel when the frame is shown at that
    // size: shown width / source width, rounded up, at least 1.
    virtual int minimumPenWidth(const QSize &shownSize) const = 0;
    // Discards strokes, masks and tracking results, and the edit history.
    virtual void reset() = 0;

    // Not undoable.
    virtual void setPreviewType(ZKSMARTKEYING::ZkPreviewType type) = 0;
    virtual ZKSMARTKEYING::ZkPreviewType previewType() const = 0;
    virtual void setMaskRegionColor(const QColor &color) = 0;
    virtual QColor maskRegionColor() const = 0;
    virtual void setMaskRegionAlpha(int alpha) = 0; // 0..255
    virtual int maskRegionAlpha() const = 0;

    // Undoable.
    virtual void setMaskInverted(bool inverted) = 0;
    virtual bool isMaskInverted() const = 0;

    // Segment nodes: the frames that carry strokes, areas or a given matte, in the order of the frames.
    // A node is named by its frame.
    //
    // Makes that result the node's. A node that was removed comes back with it, as a mask without
    // strokes or areas. Undoable; it reports a kind-13 record even while recording is suspended. False
    // for a null result, or one of another frame size.
    virtual bool setNodeResult(qint64 node, const ZkSegmentResultPtr &result) = 0;
    // Whether all that is painted belongs to one object (initially so); off, strokes and areas in
    // different places are kept as several objects. Not undoable.
    virtual void setOptionFlag(bool isSingleObject) = 0;
    virtual int segmentCount() const = 0;
    virtual qint64 segmentNodeAt(int index) const = 0; // -1 for an index out of range
    // The index of the node at that frame, -1 for none.
    virtual int segmentIndexAt(qint64 frame) const = 0;
    // Makes the node at that frame the one that is worked on; false when there is none. Not undoable.
    virtual bool selectSegmentNode(qint64 frame) = 0;
    // Takes the node away, with its strokes, areas and mask. Undoable. The edit controller's observers
    // hear nothing of it. False when there is no such node or tracking is under way.
    virtual bool removeSegmentNode(qint64 node) = 0;
    // Takes tracking results, nodes and areas of every frame away. Undoable.
    virtual void clearTrackingResults() = 0;
    // Null for a node that there is not.
    virtual ZkSegmentResultPtr nodeResult(qint64 node) const = 0;

    // Areas: rectangles around objects, in fractions of the frame's width and height, of the frame that
    // the player shows. They count from 0 in the order in which they were added; removing one moves
    // those behind it. Adding, removing and updating are undoable and report kind 13 with sub-kinds 88,
    // 89 and 90; when another frame comes up and its areas are others, that is a 90 too.
    //
    // The part of the rectangle that lies in the frame. Returns its index; -1 when nothing of it lies in
    // the frame or tracking is under way.
    virtual int addArea(const QRectF &rect) = 0;
    virtual bool removeArea(qint64 id) = 0;
    // The same rectangle again succeeds and changes nothing.
    virtual bool updateArea(qint64 id, const QRectF &rect) = 0;
    virtual int areaCount() const = 0;
    // Null when there is none. Area numbers and indices are the same.
    virtual QRectF areaRect(int area) const = 0;
    virtual QRectF areaRectAt(int index) const = 0;
    // Of the areas that contain the point (fractions of the frame), the one whose centre is nearest; -1
    // for none. An id is never used twice.
    virtual qint64 findAreaIdAt(double x, double y) const = 0;
    // Whether the player shows the masks of all areas' objects, and whether their outlines too. Not
    // undoable.
    virtual void setRenderAllAreaMasks(bool masks, bool outlines) = 0;
};

class ZK_INTERFACE IZkSmartKeyingEditControllerObserver
{
public:
    virtual ~IZkSmartKeyingEditControllerObserver() = default;
    virtual void onSavingProgressEvent(int progress) = 0; // 0..100
    virtual void onSaveFinishedEvent(int result) = 0; // ZKSMARTKEYING::ZkSaveResult
    // The strokes or the mask of that frame have changed.
    virtual void onNodeChangedEvent(qint64 frame) = 0;
};

// Edits a copy of a clip; the clip itself changes only through apply(). GUI thread only; the
// observer is always called on the GUI thread.
//
// Stroke images cover the canvas rectangle, that is the whole frame as it is shown, at any
// resolution; they are scaled onto the source frame. A pixel is painted where its alpha is not 0.
// An image without an alpha channel is painted where it is not black.
class ZK_INTERFACE IZkSmartKeyingEditController
{
public:
    virtual ~IZkSmartKeyingEditController() = default;

    virtual void addObserver(IZkSmartKeyingEditControllerObserver *observer) = 0;
    virtual void removeObserver(IZkSmartKeyingEditControllerObserver *observer) = 0;

    // Once. *initialFrame comes in as a position on the clip's timeline and goes out as the frame of
    // the edit timeline, clamped to it. False, and there is no edit clip, when the clip has no
    // readable picture.
    virtual bool initialise(IZkClip *clip,
                            IZkMediaPlayer *player,
                            qint64 *initialFrame,
                            ZKSMARTKEYING::ZkSmartKeyingBusinessType type) = 0;
    // Null before a successful initialisation. Owned by the controller.
    virtual IZkClip *editClip() const = 0;
    virtual IZkTimeline *editTimeline() const = 0;

    virtual void switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode) = 0;

    // Each is one undoable step and reports a kind-13 record before it returns, also when it failed
    // or nothing changed (then there is no step). False on failure; then no mask has changed.
    virtual bool addMask(qint64 frame, const QImage &strokes) = 0;
    virtual bool subtractMask(qint64 frame, const QImage &strokes) = 0;
    virtual bool eraseMask(qint64 frame, const QImage &strokes) = 0;
    // Makes a given matte (its grey value is the opacity of the object) the frame's mask.
    virtual bool setMatte(qint64 frame, const QImage &matte) = 0;

    // Returns a ZkTrackingStart; anything but 1 and 2 means that the run has started. The work mode
    // is 2 when it returns. Progress goes through the player.
    virtual int startTracking(qint64 frame,
                              ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                              ZKSMARTKEYING::ZkSegmentToTrackType type) = 0;
    // Keeps what was tracked. The work mode is 1 when it returns. Does nothing when idle.
    virtual void stopTracking() = 0;

    // Renders the result and writes it to the clip. Progress and result go to the observer, never
    // from inside this call.
    virtual void apply() = 0;
    // The observer hears ZkSaveResult::SaveCancelled, and the clip is as it was.
    virtual void cancelApply() = 0;

    // Takes the node of that frame away, as IZkSmartKeyingService::removeSegmentNode does, and tells the
    // observer that it changed. False when there is none, or while tracking.
    virtual bool deleteSegment(qint64 frame) = 0;
    // The picture of the node with that index with its mask over it, at most 320 x 240 pixels; null for
    // an index out of range, or when the frame cannot be read.
    virtual QImage segmentThumbnail(int index) const = 0;

    // The range of the source that the edit uses, in microseconds: [begin, end). False, and nothing has
    // changed, when the range is empty or negative, or none was registered that could be changed.
    virtual bool registerEditTime(qint64 begin, qint64 end) = 0;
    virtual bool changeEditTime(qint64 begin, qint64 end) = 0;
    virtual bool changeEditTimeCns(qint64 begin, qint64 end) = 0; // units of 100 ns
    virtual bool getEditTime(qint64 &begin, qint64 &end) const = 0;
    // The histories of the edit timeline and of the project. Not owned; null: nobody's.
    virtual void setUndoManager(IZkUndoRedoService *edit, IZkUndoRedoService *project) = 0;

    // Stops and joins every worker; the player is not touched afterwards.
    virtual void releaseMediaPlayer() = 0;
};

extern "C" {
// The caller owns the controller and gives it back with the release function (null is allowed).
ZKDATAMODEL_EXPORT IZkSmartKeyingEditController *createSmartKeyingEditController();
ZKDATAMODEL_EXPORT void releaseSmartKeyingEditController(IZkSmartKeyingEditController *controller);
}
