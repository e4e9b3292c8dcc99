#include "FakeMediaPlayer.h"

#include <QTimer>

using zk::fake::MediaPlayer;
using zk::fake::note;

class ZkMediaPlayerZoomerPresenterPrivate
{
public:
    MediaPlayer *player = nullptr;
};

class ZkMediaPlayerPresenterPrivate
{
public:
    ZkMediaPlayerPresenterPrivate() { zoomer.d_ptr->player = &player; }
    mutable MediaPlayer player;
    mutable ZkMediaPlayerZoomerPresenter zoomer;
    mutable zk::fake::Playhead playhead {"player"};
};

ZkMediaPlayerZoomerPresenter::ZkMediaPlayerZoomerPresenter(QObject *parent)
    : ZkPresenter(parent)
    , d_ptr(std::make_unique<ZkMediaPlayerZoomerPresenterPrivate>())
{ }
ZkMediaPlayerZoomerPresenter::~ZkMediaPlayerZoomerPresenter() = default;
float ZkMediaPlayerZoomerPresenter::getNextZoomLevel(int step) const
{
    return 1.0f + step;
}
void ZkMediaPlayerZoomerPresenter::zoom(float level, const QPointF &anchor)
{
    note("zoomer.zoom", level, anchor.x(), anchor.y());
}
float ZkMediaPlayerZoomerPresenter::zoomLevel(bool effective) const
{
    return effective ? 0.5f : d_ptr->player->zoomLevel;
}
QRectF ZkMediaPlayerZoomerPresenter::frameRect() const
{
    return d_ptr->player->frameRect;
}
void ZkMediaPlayerZoomerPresenter::beginPan()
{
    note("zoomer.beginPan");
}
void ZkMediaPlayerZoomerPresenter::panBy(const QPointF &offset)
{
    note("zoomer.panBy", offset.x(), offset.y());
}
void ZkMediaPlayerZoomerPresenter::endPan()
{
    note("zoomer.endPan");
}
bool ZkMediaPlayerZoomerPresenter::canPan() const
{
    return d_ptr->player->pannable;
}

ZkMediaPlayerPresenter::ZkMediaPlayerPresenter(QObject *parent)
    : ZkPresenter(parent)
    , d_ptr(std::make_unique<ZkMediaPlayerPresenterPrivate>())
{
    note("player.create");
}
ZkMediaPlayerPresenter::~ZkMediaPlayerPresenter()
{
    note("player.delete");
}
IZkMediaPlayer *ZkMediaPlayerPresenter::mediaPlayer() const
{
    return &d_ptr->player;
}
IZkMediaPlayerZoomer *ZkMediaPlayerPresenter::zoomer() const
{
    return &d_ptr->zoomer;
}
ZkMediaPlayerZoomerPresenter *ZkMediaPlayerPresenter::zoomerPresenter() const
{
    return &d_ptr->zoomer;
}
IZkPlayhead *ZkMediaPlayerPresenter::playhead() const
{
    return &d_ptr->playhead;
}
qint64 ZkMediaPlayerPresenter::currentFrame() const
{
    return d_ptr->player.frame;
}
bool ZkMediaPlayerPresenter::isPlaying() const
{
    return d_ptr->player.playing;
}
int ZkMediaPlayerPresenter::state() const
{
    return isPlaying() ? ZKPLAYER::PlayingState : ZKPLAYER::PausedState;
}
float ZkMediaPlayerPresenter::mediaFrameRate() const
{
    return 25.0f;
}
void ZkMediaPlayerPresenter::play() { }
void ZkMediaPlayerPresenter::stopPlay()
{
    note("player.stopPlay");
}
void ZkMediaPlayerPresenter::update()
{
    note("player.update");
    const int delay = d_ptr->player.seekDelay;
    if (delay >= 0)
        QTimer::singleShot(delay, this, &ZkMediaPlayerPresenter::sigSeekFinished);
}
void ZkMediaPlayerPresenter::setZoomEnabled(bool enabled)
{
    note("player.setZoomEnabled", enabled);
}
bool ZkMediaPlayerPresenter::isZoomEnabled() const
{
    return true;
}

int ZkMediaPlayerPresenter::duration() const
{
    return d_ptr->player.duration;
}
void ZkMediaPlayerPresenter::playOrPause()
{
    note("player.playOrPause");
}
void ZkMediaPlayerPresenter::stopAndReturn()
{
    note("player.stopAndReturn");
}
void ZkMediaPlayerPresenter::step(int frames)
{
    note("player.step", frames);
}
void ZkMediaPlayerPresenter::seek(int frame)
{
    note("player.seek", frame);
}
void ZkMediaPlayerPresenter::addObserver(IZkPlayerControlObserver *observer)
{
    d_ptr->player.observers.append(observer);
}
void ZkMediaPlayerPresenter::removeObserver(IZkPlayerControlObserver *observer)
{
    d_ptr->player.observers.removeOne(observer);
}
