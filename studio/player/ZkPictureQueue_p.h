// Not public. Renders pictures in a worker thread, the newest request first and alone.
#pragma once

#include "ZkFrameRenderer.h"

#include <QImage>
#include <QObject>
#include <QThread>

#include <functional>

namespace zk::player {

// Whole, and reduced to what it is on screen, in device pixels, where that is smaller.
using Picture = zk::datamodel::FrameRenderer::Preview;

// Requests that come while a picture is being rendered are answered together by the next one, so that
// any number of them costs at most two renderings. Lives on the GUI thread.
class PictureQueue : public QObject
{
    Q_OBJECT

public:
    // Both run in the worker thread. The picture is a null one when it fails; what can be made ready for the
    // next one meanwhile, if anything, comes after the picture has been handed over.
    struct Job
    {
        std::function<Picture()> render;
        std::function<void()> readAhead;
    };
    // Called on the GUI thread when a rendering starts, so that it sees what is current then. A job
    // that renders nothing: there is nothing to show.
    using Prepare = std::function<Job()>;

    enum Request {
        Passing, // one of a run of frames, nobody waits for it
        Repaint, // what is shown is outdated: who waits, waits for this one, too
        Awaited, // settled() follows, once for each such request
    };

    explicit PictureQueue(Prepare prepare, QObject *parent = nullptr);
    // Waits for the worker.
    ~PictureQueue() override;

    void request(Request kind);
    bool isBusy() const { return m_isBusy; }
    // Returns when the worker has nothing left to do, and throws its picture away. Requests that are
    // awaited are still settled.
    void discard();

Q_SIGNALS:
    // Posted. A null picture: the rendering has failed, or there was nothing to show.
    void rendered(const zk::player::Picture &picture);
    // After rendered(), and only when no newer picture is awaited.
    void settled();

private:
    void startNext();
    void finish(const Picture &picture);
    void settle();

    Prepare m_prepare;
    QThread m_thread;
    QObject m_worker; // lives in the thread; jobs are posted to it

    // Requests are numbered.
    quint64 m_newest = 0;
    quint64 m_running = 0;
    quint64 m_finished = 0;
    quint64 m_discarded = 0; // up to this one
    quint64 m_settlesAt = 0;
    int m_awaited = 0;
    bool m_isBusy = false;
};

} // namespace zk::player
