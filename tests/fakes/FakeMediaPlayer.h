// What is behind the fake ZkMediaPlayerPresenter; tests set what it answers and emit its signals.
#pragma once

#include "FakeTimeline.h"

#include "ZkMediaPlayer.h"

namespace zk::fake {

class MediaPlayer : public IZkMediaPlayer
{
public:
    static MediaPlayer *of(const ZkMediaPlayerPresenter *presenter)
    {
        return static_cast<MediaPlayer *>(presenter->mediaPlayer());
    }

    bool open(const ZkMediaPlayerOpenParam &param) override
    {
        note("player.open", param.handle, param.kind, param.startFrame, param.endFrame);
        opened = param;
        return true;
    }
    void stop() override
    {
        note("player.stop");
        if (onStop)
            onStop();
    }
    void detachSource() override { note("player.detachSource"); }
    void setMode(int state, int speed) override { note("player.setMode", state, speed); }

    std::function<void()> onStop;
    ZkMediaPlayerOpenParam opened;
    qint64 frame = 0;
    int duration = 100; // frames
    QVector<IZkPlayerControlObserver *> observers;
    bool playing = false;
    int seekDelay = 0; // ms until an update is on screen; negative: never
    QRectF frameRect {0, 0, 640, 360};
    bool pannable = true;
    float zoomLevel = 0; // not the effective one
};

} // namespace zk::fake
