// What a bar under a player needs of the player.
#pragma once

#include "../ZkGlobal.h"

class ZK_INTERFACE IZkPlayerControlObserver
{
public:
    virtual ~IZkPlayerControlObserver() = default;
    virtual void playerStateChanged(int state) = 0; // ZKPLAYER::ZkPlayerState
    virtual void playerFrameChanged(int frame) = 0;
    virtual void playerDurationChanged(int frames) = 0;
};

// GUI thread only. What it refuses while tracking or with nothing open changes nothing.
class ZK_INTERFACE IZkPlayerControl
{
public:
    virtual ~IZkPlayerControl() = default;
    virtual int state() const = 0; // ZKPLAYER::ZkPlayerState
    virtual int duration() const = 0; // frames; 0 while nothing is open
    virtual qint64 currentFrame() const = 0; // -1 while nothing is open
    virtual float mediaFrameRate() const = 0; // frames per second; 0 while nothing is open
    virtual void playOrPause() = 0;
    // Stops playback and stays on the frame.
    virtual void stopPlay() = 0;
    // Stops playback and goes back to the frame where it started. While nothing plays: to the frame
    // where the last playback started.
    virtual void stopAndReturn() = 0;
    // By so many frames, clamped to the clip; stops playback first.
    virtual void step(int frames) = 0;
    virtual void seek(int frame) = 0;
    virtual void addObserver(IZkPlayerControlObserver *observer) = 0;
    virtual void removeObserver(IZkPlayerControlObserver *observer) = 0;
};
