// What a bar under the player needs, on top of the player's own operations.
#include "ZkMediaPlayerPresenter_p.h"

int ZkMediaPlayerPresenter::duration() const
{
    Q_D(const ZkMediaPlayerPresenter);
    return d->duration();
}

void ZkMediaPlayerPresenter::playOrPause()
{
    if (isPlaying())
        stopPlay();
    else
        play();
}

void ZkMediaPlayerPresenter::stopAndReturn()
{
    Q_D(ZkMediaPlayerPresenter);
    d->stopPlay();
    if (d->isOpen() && d->m_playbackStart >= 0)
        d->m_playhead.setPosition(d->m_playbackStart);
}

void ZkMediaPlayerPresenter::step(int frames)
{
    Q_D(ZkMediaPlayerPresenter);
    d->stopPlay();
    if (d->isOpen())
        d->m_playhead.setPosition(d->currentFrame() + frames);
}

void ZkMediaPlayerPresenter::seek(int frame)
{
    Q_D(ZkMediaPlayerPresenter);
    if (d->isOpen())
        d->m_playhead.setPosition(frame);
}

void ZkMediaPlayerPresenter::addObserver(IZkPlayerControlObserver *observer)
{
    Q_D(ZkMediaPlayerPresenter);
    d->m_observers.append(observer);
}

void ZkMediaPlayerPresenter::removeObserver(IZkPlayerControlObserver *observer)
{
    Q_D(ZkMediaPlayerPresenter);
    d->m_observers.removeOne(observer);
}

int ZkMediaPlayerPresenterPrivate::duration() const
{
    const ZkRange<qint64> range = m_playhead.frameRange();
    return isOpen() ? int(range.maximum - range.minimum + 1) : 0;
}

// Observers may go away in a notice.
void ZkMediaPlayerPresenterPrivate::notify(void (IZkPlayerControlObserver::*notice)(int), int value)
{
    const QVector<IZkPlayerControlObserver *> observers = m_observers;
    for (IZkPlayerControlObserver *observer : observers) {
        if (m_observers.contains(observer))
            (observer->*notice)(value);
    }
}
