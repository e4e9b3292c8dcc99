#pragma once

#include "../segmentation/ZkSegments.h"

#include <QSize>
#include <QVector>

#include <atomic>
#include <functional>
#include <thread>

class QObject;

namespace zk::datamodel {

struct ApplyTask
{
    Segments segments;
    bool invert = false;
    QSize frameSize; // pixels
    qint64 frameCount = 0;
};

// The mattes of all frames as they will be on the project's clip. A frame without a mask has an empty
// matte: nothing of it is kept (all of it when inverted).
struct ApplyResult
{
    QVector<EncodedMatte> mattes; // empty: a mask is damaged
    qint64 framesWithoutMask = 0;
};

// Renders the final mattes in a worker thread. Reports come as queued calls in the thread of the
// context, which must outlive the run; those on their way when the run is cancelled still arrive, and it
// is for the receiver to know. The destructor waits for the worker.
class ApplyRun
{
public:
    struct Receiver
    {
        std::function<void(quint64 serial, int percent)> progress; // 0..100, rising
        std::function<void(quint64 serial, const ApplyResult &)> finished; // not after cancel()
    };

    ApplyRun(const ApplyTask &task, QObject *context, const Receiver &receiver);
    ~ApplyRun();

    quint64 serial() const { return m_serial; }
    void cancel() { m_isCancelled = true; }
    bool isDone() const { return m_isDone; }

private:
    Q_DISABLE_COPY(ApplyRun)

    void work();
    ApplyResult render();
    EncodedMatte finalMatte(qint64 frame);
    EncodedMatte emptyMatte();
    void postProgress(int percent);
    void postFinished(const ApplyResult &result);

    const ApplyTask m_task;
    QObject *const m_context;
    const Receiver m_receiver;
    const quint64 m_serial;
    EncodedMatte m_emptyMatte; // the same for all frames without a mask
    std::atomic<bool> m_isCancelled {false};
    std::atomic<bool> m_isDone {false};
    std::thread m_worker;
};

} // namespace zk::datamodel
