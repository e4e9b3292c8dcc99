// Not public. The player behind its presenter, and what a widget that shows it plugs into.
#pragma once

#include "ZkMediaPlayer.h"
#include "ZkPictureQueue_p.h"
#include "ZkPlaybackClock_p.h"
#include "ZkPlayerFeedback.h"
#include "ZkPlayerPlayhead_p.h"

#include <QTimer>

class ZkStudioTimeline;

namespace zk::datamodel {
class FrameRenderer;
}

// While nothing is open the state is StoppedState, or TrackingState during a run. During a run the player
// moves as the run tells it; playing and seeking are refused.
// GUI thread only; pictures are rendered in a worker.
class ZKMEDIAPLAYER_EXPORT ZkMediaPlayerPresenterPrivate : public QObject,
                                                           public IZkMediaPlayer,
                                                           public zk::datamodel::PlayerFeedback,
                                                           public IZkTimelineEventObserver
{
    Q_OBJECT
    Q_DECLARE_PUBLIC(ZkMediaPlayerPresenter)

public:
    explicit ZkMediaPlayerPresenterPrivate(ZkMediaPlayerPresenter *presenter);
    ~ZkMediaPlayerPresenterPrivate() override;

    static ZkMediaPlayerPresenterPrivate *get(ZkMediaPlayerPresenter *presenter);

    // For the widget.

    // Its size in widget pixels, with the device pixels of one widget pixel. An empty size: there is no
    // widget (any more).
    void setViewport(const QSizeF &size, qreal devicePixelRatio);
    // Of the source's size, ready to be painted into zoomer()->frameRect(). Null until there is one.
    const QImage &picture() const { return m_picture.whole; }
    // The same, of the size in device pixels that the frame had on screen when it was rendered; null when
    // that was not smaller.
    const QImage &reducedPicture() const { return m_picture.reduced; }

    bool open(const ZkMediaPlayerOpenParam &param) override;
    void stop() override;
    void detachSource() override;
    // PlayingState with a speed plays so many times as fast, backwards when it is negative; what play()
    // refuses is refused here, too. While nothing is open only TrackingState is taken as it stands, the
    // others mean StoppedState.
    void setMode(int state, int speed) override;

    void trackingStarted() override;
    void showTrackedFrame(qint64 frame) override;
    void trackingProgress(int percent) override;
    void trackingFinished() override;

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override;

Q_SIGNALS:
    void pictureChanged();

private:
    bool isOpen() const { return m_handle != 0; }
    bool canPlay() const;
    ZkStudioTimeline *timeline() const;
    qint64 currentFrame() const { return isOpen() ? m_playhead.position() : -1; }

    void attach(ZkStudioTimeline *timeline, const ZkMediaPlayerOpenParam &param);
    void release();
    void finishOpening();
    int duration() const;
    void notify(void (IZkPlayerControlObserver::*notice)(int), int value);
    void setState(int state);
    void reportFrame();
    void play(int speed);
    void startPlayback(int speed);
    void endPlayback();
    void stopPlay();
    void goTo(qint64 frame);
    void advance();
    bool acceptsSeek() const;
    void seek();
    QSize reducedSize();
    zk::player::PictureQueue::Job prepareJob();
    void show(const zk::player::Picture &picture);

    ZkMediaPlayerPresenter *q_ptr;
    ZkMediaPlayerZoomerPresenter m_zoomer;
    zk::player::PlayerPlayhead m_playhead;
    zk::player::PictureQueue m_queue;
    zk::player::PlaybackClock m_clock;
    QTimer m_playTimer;

    ZkTimelineHandle m_handle = 0; // of what is open; a timeline may die before it is let go of
    std::shared_ptr<zk::datamodel::FrameRenderer> m_renderer; // used by the worker alone
    double m_frameRate = 0;
    bool m_isStill = false;
    int m_state = ZKPLAYER::StoppedState;
    int m_speedWhenOpened = 0; // 0: do not play
    qint64 m_reportedFrame = -1;
    qint64 m_playbackStart = -1; // where the last playback of what is open began
    QVector<IZkPlayerControlObserver *> m_observers;
    zk::player::Picture m_picture;
    quint64 m_renderedDelivery = 0; // of the timeline's changes, the last one that was rendered
};
