// Presenter of one smart keying editing context.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "ZkCore.h"
#include "datamodel/ZkSmartKeyingTypes.h"

#include <QColor>
#include <QCursor>
#include <QImage>
#include <QModelIndex>
#include <QPoint>
#include <QPointF>
#include <QRect>

#include <memory>

class IZkAbstractMediaItem;
class IZkClip;
class IZkEffect;
class IZkSmartKeyingEditController;
class IZkSmartKeyingService;
class IZkTimeline;
class IZkUndoRedoService;
class ZCutoutPresetItemManager;
class ZkMediaPlayerPresenter;
class ZkSmartKeyingPresenterPrivate;
class ZTimelinePresenter;

// The editing context of one clip: the user paints what to keep and what to remove, the edit
// controller makes a mask of it and tracks it through the clip, and the result becomes a cutout effect.
// Serves both workspaces: smart cutout directly, AI erasing as the base of its own presenter.
//
// Owns the edit controller, the player presenter and the preset manager; edit clip, edit timeline and
// undo service belong to the edit controller. Views hold the presenter as a plain pointer and must die
// first. GUI thread only.
//
// Frames are positions on the edit timeline. Widths of the pen are widget pixels: zooming the frame
// does not scale the brush, so that the same brush paints finer detail on an enlarged frame.
class ZKSMARTKEYING_EXPORT ZkSmartKeyingPresenter : public ZkPresenter
{
    Q_OBJECT

public:
    // What a drag on the player does.
    enum PlayerEditMode {
        TrackingEditMode = 0, // nothing; reported while tracking, never stored
        KeepMode = 1, // adds to the object
        RemoveMode = 2, // removes from the object
        EraseMode = 3, // erases mask
        HandMode = 4, // pans the frame
        SelectRectMode = 5, // selects a rectangular area
    };
    Q_ENUM(PlayerEditMode)

    enum PromptType {
        DrawMaskFirstPrompt = 0,
        TrackingFailedPrompt = 1,
        NothingToTrackPrompt = 2,
    };
    Q_ENUM(PromptType)

    // Does not keep the clip: reads where its timeline's playhead stands and hands it to the edit
    // controller. Test isInitSuccessful() before anything else; without it there is nothing to edit.
    ZkSmartKeyingPresenter(ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                           IZkClip *clip,
                           QObject *parent = nullptr);
    ~ZkSmartKeyingPresenter() override;

    // Back to how the workspace opened: no strokes, masks, tracking results and cutout effects, the
    // keep tool, the default pen, the whole frame visible.
    void reset() override;
    // Takes every message.
    bool dispatchMessage(ZkMessage *message) override;
    // Shows the edit timeline from the frame that the clip's playhead stood on. The view calls it when
    // it has been built.
    virtual void openEditTimeline();

    // The host's objects; none is handed over. Edit clip and edit timeline, with all that hangs on
    // them, and the preset manager are null after a failed initialisation.
    IZkSmartKeyingEditController *editController() const;
    IZkClip *editClip() const;
    IZkTimeline *editTimeline() const;
    IZkUndoRedoService *undoRedoService() const;
    IZkSmartKeyingService *smartKeyingService() const;
    ZkMediaPlayerPresenter *playerPresenter() const;
    ZCutoutPresetItemManager *presetManager() const;
    ZTimelinePresenter *timelinePresenter() const;
    void setTimelinePresenter(ZTimelinePresenter *presenter); // not owned
    qint64 currentFrame() const; // -1 while the player has nothing open

    bool isInitSuccessful() const;
    bool isSmartCutout() const;
    bool isPhotoMode() const; // a still image
    bool isGifMode() const; // an animated GIF
    QString sourceFormat() const; // lower-case suffix of the media file; empty without one

    bool isTrackingMode() const;
    // Always reports sigTrackingModeChanged, whether or not tracking is concerned.
    void switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode);

    // Tracking hides the stored mode; it comes back afterwards.
    PlayerEditMode playerEditMode() const;
    // The eraser is refused without a signal while there is nothing to erase on the frame.
    void setPlayerEditMode(PlayerEditMode mode);
    bool isDrawingMode() const;
    bool isSelectRectMode() const;

    bool isUIControlsEnabled() const;
    void setUIControlsEnabled(bool enabled);

    // Whether strokes raise the segment progress at all. Switching it off hides a progress that shows.
    bool isProgressEnabled() const;
    void setProgressEnabled(bool enabled);
    void forceHideProgress();
    bool canShowSegmentProgress() const;
    int segmentProgress() const; // percent

    // The context is stopping on purpose; also set by stopTrackingMode() and cleared by reset().
    bool isClosing() const;
    void setClosing(bool closing);
    // A flag for the views.
    bool hasStartedTracking() const;
    void setHasStartedTracking(bool started);
    // Whether closing now would lose work.
    bool hasModify() const;
    // Whether there are strokes or tracking results.
    bool isUsed() const;

    // Steps of the edit timeline's history; macros nest.
    void beginMacro(const QString &text);
    void endMacro();

    // The frame on the player. Levels are source scale, 0 fits the frame; points are widget pixels.
    // What changed comes back as sigFrameZoomed and sigFrameMoved.
    void zoomFrame(float level, const QPointF &anchor);
    float zoomLevel(bool effective) const;
    float getNextZoomLevel(int step) const;
    QRect canvasRect() const; // where the whole frame lies on the player
    void startMoveFrame();
    void moveFrame(const QPointF &offset); // from where the move started
    void finishMoveFrame();
    bool canMoveFrame() const;
    bool isFrameMoving() const;
    void setFrameMoving(bool moving);

    // Takes over the strokes painted on the current frame; the edit mode alone decides what they mean.
    // The image covers canvasRect() and is painted where its alpha is not 0. Dropped while the player
    // plays, while an earlier stroke is still being segmented, when the image is empty or no frame is
    // shown. Returns when the new result is on screen, at the latest after 6 seconds.
    void setMask(const QImage &mask);
    bool isEraseMaskEnable() const; // there is a mask to erase on the current frame
    bool isEraseMaskOverlap(const QImage &mask) const;
    // Goes back to the keep tool when there is nothing to erase on the current frame.
    void setEraseMaskDisable();

    int penPixelWidth() const;
    // Unchecked and not undoable; the next zoom brings it into penPixelWidthRange().
    void setPenPixelWidth(int width);
    int penDrawWidth() const; // diameter of the drawing cursor, at least 2
    void setPenDrawWidth(int width);
    ZkRange<int> penPixelWidthRange() const;
    int defaultPenPixelWidth() const;
    void setDefaultPenPixelWidth(int width);
    void changePenPixelWidth(int width); // undoable
    // A drag that changes the width freely in between is one undoable step.
    bool isPenPixelWidthChanging() const;
    void setPenPixelWidthChanging(bool changing);
    QColor penColor() const; // half transparent; invalid outside the drawing modes
    QCursor cursor(bool pressedAllowed) const;
    QCursor pressedCursor() const;

    // Starts at the current frame. A refusal is reported by sigPrompt and leaves everything as it was.
    void beginTrackingMode(ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                           ZKSMARTKEYING::ZkSegmentToTrackType type);
    void beginTrackingModeForSimpleMode();
    // Keeps what was tracked.
    void stopTrackingMode();
    bool isTracked() const;
    // Of the run that was started last.
    ZKSMARTKEYING::ZkSegmentToTrackDirect toTrackDirect() const;
    ZKSMARTKEYING::ZkSegmentToTrackType toTrackType() const;

    // The cutout effect of the edit clip; the first one when there are several, null without one.
    IZkEffect *getEffect() const;
    static bool isSmartKeyingEffect(IZkEffect *effect);
    bool isEffectEnabled() const;
    // False without a cutout effect. Repaints even when nothing changes.
    bool setEffectEnabled(bool enabled);
    void removeEffects();

    // One undoable step that replaces the clip's cutout effects. An item without a usable effect
    // changes nothing and leaves no step.
    void applyPreset(IZkAbstractMediaItem *item);
    void applyNonePreset();
    // Applies the preset of that row of the preset model, row 0 being none. One that is not on disk is
    // downloaded first; sigEffectPresetItemDownloadFailed tells when that fails.
    void selectPresetAtIndex(const QModelIndex &index);
    // Invalid when the effect carries no preset's key or the preset is not in the model.
    QModelIndex findPresetIndexByEffect(IZkEffect *effect) const;
    void notifyEffectMediaItemsLoaded();

    // Writes the result to the project's clip. sigSavingProgress follows, then either sigSaveFinished
    // or sigSaveCancel, never from inside the call.
    void applyModify();
    void cancelApply();

    static void trackSmartCutoutClickEvent(const QString &btnName, const QString &sourceFormat);
    void trackEffectSaveEvent();
    // An invalid index sends nothing.
    void trackEffectEvent(const QModelIndex &preset, const QString &interactionType);
    void trackPresetAtIndex(const QModelIndex &preset);

Q_SIGNALS:
    void sigFrameZoomed();
    void sigFrameMoved();
    void sigPlayerEditModeChanged(); // also when the same mode is set again
    void sigPenPixelWidthChanged(int width);
    void sigPenDrawWidthChanged(int width); // before sigPenPixelWidthChanged, and on every zoom
    void sigUndoRedoChanged();
    void sigSmartKeyingSegmentChanged(); // strokes, masks, tracking results or how they are shown
    void sigAIRemoveSelectAreaAdd();
    void sigAIRemoveSelectAreaRemove();
    void sigAIRemoveSelectAreaUpdate();
    void sigEffectAdded();
    void sigEffectRemoved();
    void sigEffectPropertyChanged();
    void sigTrackingModeChanged(bool tracking);
    void sigTrackingProgress(int progress); // percent
    void sigPenPixelWidthBeginChanged();
    void sigPenPixelWidthEndChanged();
    void sigPrompt(PromptType type);
    void sigCloseDialog(bool accept); // emitted by the views
    void sigFrameChanged(int frames); // the current frame
    void sigDrawingFinished(); // emitted by the drawing view after setMask()
    void sigNodeChanged(qint64 frame);
    void sigSavingProgress(int progress); // percent
    void sigSaveFinished(bool success); // not when the save was cancelled
    void sigSaveCancel();
    void sigReset();
    void sigDrawingEnabledChanged(bool bEnabled); // emitted by the views
    void sigDrawingMousePressed(QPoint); // emitted by the views
    void sigEffectPresetItemDownloadFailed();
    void sigSegmentProgressValueChanged(int); // percent
    void sigSegmentProgressStatusChanged(bool bShow); // only when it differs
    void sigEffectMediaItemsLoaded();
    void sigUIControlsEnabledChanged(bool enabled); // only when it differs

private:
    std::unique_ptr<ZkSmartKeyingPresenterPrivate> d_ptr;
    Q_DECLARE_PRIVATE(ZkSmartKeyingPresenter)
    Q_DISABLE_COPY(ZkSmartKeyingPresenter)
};
