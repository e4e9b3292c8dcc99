#include "ZkMediaPlayerPresenter_p.h"

#include "ZkMediaPlayerZoomerPresenter_p.h"

ZkMediaPlayerPresenter::ZkMediaPlayerPresenter(QObject *parent)
    : ZkPresenter(parent)
    , d_ptr(std::make_unique<ZkMediaPlayerPresenterPrivate>(this))
{ }

ZkMediaPlayerPresenter::~ZkMediaPlayerPresenter() = default;

IZkMediaPlayer *ZkMediaPlayerPresenter::mediaPlayer() const
{
    return d_ptr.get();
}

IZkMediaPlayerZoomer *ZkMediaPlayerPresenter::zoomer() const
{
    return &d_ptr->m_zoomer;
}

ZkMediaPlayerZoomerPresenter *ZkMediaPlayerPresenter::zoomerPresenter() const
{
    return &d_ptr->m_zoomer;
}

IZkPlayhead *ZkMediaPlayerPresenter::playhead() const
{
    return &d_ptr->m_playhead;
}

qint64 ZkMediaPlayerPresenter::currentFrame() const
{
    Q_D(const ZkMediaPlayerPresenter);
    return d->currentFrame();
}

bool ZkMediaPlayerPresenter::isPlaying() const
{
    return state() == ZKPLAYER::PlayingState;
}

int ZkMediaPlayerPresenter::state() const
{
    Q_D(const ZkMediaPlayerPresenter);
    return d->m_state;
}

float ZkMediaPlayerPresenter::mediaFrameRate() const
{
    Q_D(const ZkMediaPlayerPresenter);
    return float(d->m_frameRate);
}

void ZkMediaPlayerPresenter::play()
{
    Q_D(ZkMediaPlayerPresenter);
    d->play(1);
}

void ZkMediaPlayerPresenter::stopPlay()
{
    Q_D(ZkMediaPlayerPresenter);
    d->stopPlay();
}

void ZkMediaPlayerPresenter::update()
{
    Q_D(ZkMediaPlayerPresenter);
    d->m_queue.request(zk::player::PictureQueue::Awaited);
}

void ZkMediaPlayerPresenter::setZoomEnabled(bool enabled)
{
    Q_D(ZkMediaPlayerPresenter);
    ZkMediaPlayerZoomerPresenterPrivate::get(&d->m_zoomer)->setZoomEnabled(enabled);
}

bool ZkMediaPlayerPresenter::isZoomEnabled() const
{
    return ZkMediaPlayerZoomerPresenterPrivate::get(&d_ptr->m_zoomer)->isZoomEnabled();
}
