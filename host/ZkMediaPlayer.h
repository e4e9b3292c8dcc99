// Host media player: shows a timeline, zooms and pans it, and reports what it does.
#pragma once

#include "ZkCore.h"
#include "datamodel/ZkTimeline.h"
#include "widgets/ZkPlayerControl.h"

#include <QPointF>
#include <QRectF>

#include <memory>

namespace ZKPLAYER {

enum ZkPlayerState {
    StoppedState = 0,
    OpeningState = 1,
    PausedState = 2,
    PlayingState = 3,
    TrackingState = 4,
};

enum ZkPlayerProperty {
    ZoomProperty = 1, // the zoom level or the size of the frame rectangle
    PanProperty = 2,
};

enum ZkOpenKind {
    OpenTimeline = 1,
};

} // namespace ZKPLAYER

struct ZkMediaPlayerOpenParam
{
    ZkTimelineHandle handle = 0;
    int kind = ZKPLAYER::OpenTimeline;
    qint64 startFrame = 0;
    qint64 endFrame = 0; // 0: to the end
    bool autoPlay = false;
    bool showFirstFrame = true;
    bool followChanges = true; // repaint when the timeline is edited
    bool keepZoom = true; // do not go back to the fitted view
};

// GUI thread only.
class ZK_INTERFACE IZkMediaPlayer
{
public:
    virtual ~IZkMediaPlayer() = default;
    // False, and the player is stopped, when there is no such timeline.
    virtual bool open(const ZkMediaPlayerOpenParam &param) = 0;
    virtual void stop() = 0;
    // Lets go of the opened timeline.
    virtual void detachSource() = 0;
    // Puts the player in a ZkPlayerState by hand, with a speed of 0 for standing still. Reports the
    // state only when it differs.
    virtual void setMode(int state, int speed) = 0;
};

// The frame's size and place on the player. Levels are source scale: 1 shows a source pixel on one
// widget pixel. Points and rectangles are in widget pixels. Without a widget the view port has the
// source's size.
class ZK_INTERFACE IZkMediaPlayerZoomer
{
public:
    virtual ~IZkMediaPlayerZoomer() = default;
    // Level 0 fits the whole frame and ignores the anchor; the anchor stays where it is otherwise.
    // A null anchor means the middle of the view port.
    virtual void zoom(float level, const QPointF &anchor) = 0;
    // 0 while the frame is fitted, unless the effective level is asked for.
    virtual float zoomLevel(bool effective) const = 0;
    // Where the whole frame lies, snapped to whole pixels; may be larger than the view port.
    virtual QRectF frameRect() const = 0;
    virtual void beginPan() = 0;
    // Offset from where the pan began, not from the last call.
    virtual void panBy(const QPointF &offset) = 0;
    virtual void endPan() = 0;
    // False while the whole frame is visible.
    virtual bool canPan() const = 0;
};

class ZkMediaPlayerPresenterPrivate;
class ZkMediaPlayerZoomerPresenterPrivate;

class ZKMEDIAPLAYER_EXPORT ZkMediaPlayerZoomerPresenter : public ZkPresenter,
                                                          public IZkMediaPlayerZoomer
{
    Q_OBJECT

public:
    explicit ZkMediaPlayerZoomerPresenter(QObject *parent = nullptr);
    ~ZkMediaPlayerZoomerPresenter() override;

    // The level that many steps further in the table of levels (negative: out), from the effective
    // level; the last one at either end.
    float getNextZoomLevel(int step) const;

    void zoom(float level, const QPointF &anchor) override;
    float zoomLevel(bool effective) const override;
    QRectF frameRect() const override;
    void beginPan() override;
    void panBy(const QPointF &offset) override;
    void endPan() override;
    bool canPan() const override;

Q_SIGNALS:
    void sigPropertyChanged(int property); // ZKPLAYER::ZkPlayerProperty

private:
    friend class ZkMediaPlayerPresenterPrivate;
    std::unique_ptr<ZkMediaPlayerZoomerPresenterPrivate> d_ptr;
    Q_DECLARE_PRIVATE(ZkMediaPlayerZoomerPresenter)
};

class ZKMEDIAPLAYER_EXPORT ZkMediaPlayerPresenter : public ZkPresenter, public IZkPlayerControl
{
    Q_OBJECT

public:
    explicit ZkMediaPlayerPresenter(QObject *parent = nullptr);
    ~ZkMediaPlayerPresenter() override;

    // Owned by the presenter.
    IZkMediaPlayer *mediaPlayer() const;
    IZkMediaPlayerZoomer *zoomer() const;
    ZkMediaPlayerZoomerPresenter *zoomerPresenter() const;
    IZkPlayhead *playhead() const;

    // The frame that is shown or sought; -1 while nothing is open.
    qint64 currentFrame() const override;
    bool isPlaying() const;
    int state() const override; // ZKPLAYER::ZkPlayerState
    // Frames per second of what is open; 0 while nothing is open.
    float mediaFrameRate() const override;
    int duration() const override;

    // Refused while tracking.
    void play();
    void playOrPause() override;
    // Stops playback and stays on the frame. Does nothing unless playing.
    void stopPlay() override;
    void stopAndReturn() override;
    void step(int frames) override;
    void seek(int frame) override;
    void addObserver(IZkPlayerControlObserver *observer) override;
    void removeObserver(IZkPlayerControlObserver *observer) override;
    // Repaints the current frame with the current masks and effects; sigSeekFinished follows.
    void update();
    void setZoomEnabled(bool enabled);
    bool isZoomEnabled() const;

Q_SIGNALS:
    void sigStateChanged(int state); // ZKPLAYER::ZkPlayerState; only when it differs
    // Zoom is reported from inside the call that opens, shows the first frame or resizes.
    void sigPropertyChanged(int property); // ZKPLAYER::ZkPlayerProperty
    void sigPercentProgress(int percent); // of a tracking run, 0..100
    void sigFrameChanged(int frame); // the current frame, only when it differs
    // The requested frame with the current masks and effects is on screen. Once after every seek and
    // every update(), posted, never from inside the call, with or without a widget.
    void sigSeekFinished();

private:
    std::unique_ptr<ZkMediaPlayerPresenterPrivate> d_ptr;
    Q_DECLARE_PRIVATE(ZkMediaPlayerPresenter)
    friend class ZkMediaPlayerWidget;
};
