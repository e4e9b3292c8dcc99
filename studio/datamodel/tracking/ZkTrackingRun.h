#pragma once

#include "../segmentation/ZkSegments.h"
#include "ZkBoundedQueue.h"
#include "ZkTrackingPlan.h"

#include "ZkMediaInfo.h"
#include "backend/ZkEngineBackends.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class QObject;

namespace zk::media {
class MediaReader;
}

namespace zk::datamodel {

// What a run needs to know; taken when it starts.
struct TrackingTask
{
    zk::media::MediaInfo media;
    qint64 inFrame = 0; // frame of the file that is frame 0 of the clip
    Segments segments;
    QVector<TrackingLeg> legs;
    zk::engine::EngineBackendsPtr engine;
};

// One frame that a run has got to.
struct TrackedFrame
{
    qint64 frame = 0;
    bool isForward = true;
    TrackedSide side;
    int percent = 0; // of the whole run
    // Another scene begins at the frame: the run leaves it out, and all that follow up to this one.
    qint64 skippedTo = -1; // -1: there is a result
};

// A tracking run in worker threads: one decodes, one prepares, one advances the tracker and compresses.
// Each is at most a few frames ahead of the next, so memory does not depend on the length of the clip.
//
// Every node is the truth on its frame: a leg learns from the nodes around its start before it starts,
// and stands at those on its way as it passes them. Where the scene changes a leg goes on with the next node
// on its way, or ends when there is none.
//
// Results come as queued calls in the thread of the context, which must outlive the run. stop() makes
// the workers end after the frame that they are at and does not wait; results that are on their way
// then still arrive, and it is for the receiver to know that the run is over. The destructor waits.
class TrackingRun
{
public:
    struct Receiver
    {
        std::function<void(quint64 serial, const TrackedFrame &)> tracked;
        // With an empty error when all of it is tracked. Not after stop().
        std::function<void(quint64 serial, const QString &error)> finished;
    };

    TrackingRun(const TrackingTask &task, QObject *context, const Receiver &receiver);
    ~TrackingRun();

    // Tells runs apart, also after they are gone.
    quint64 serial() const { return m_serial; }
    void stop();
    // Every worker has ended: the destructor will not wait.
    bool isDone() const { return m_runningWorkers == 0; }

private:
    Q_DISABLE_COPY(TrackingRun)
    struct Step;
    struct Decoded;
    struct Prepared;
    class Advancer;

    void startWorker(void (TrackingRun::*work)());
    template<typename Work>
    void guarded(Work work);
    void decode();
    bool decodeMemory(zk::media::MediaReader *reader, int leg);
    bool decodeLeg(zk::media::MediaReader *reader, int leg);
    bool decodeStretch(zk::media::MediaReader *reader, int leg, qint64 from, qint64 count);
    bool decodeFrame(zk::media::MediaReader *reader, const Step &step, Decoded *decoded);
    void skip(int leg, qint64 first, qint64 last);
    bool isSkipped(const Step &step) const;
    void prepare();
    void advance();
    void fail(const QString &error);
    void postTracked(const TrackedFrame &tracked);
    void postFinished(const QString &error);

    const TrackingTask m_task;
    QObject *const m_context;
    const Receiver m_receiver;
    const quint64 m_serial;
    const std::unique_ptr<zk::engine::TrackingBackend> m_tracker;
    const std::unique_ptr<BoundedQueue<Decoded>> m_decoded;
    const std::unique_ptr<BoundedQueue<Prepared>> m_prepared;
    mutable std::mutex m_skipMutex;
    int m_skippedLeg = -1; // guarded, as the next ones; the latest scene change
    qint64 m_skippedFrom = 0; // in the order of the leg
    qint64 m_skippedTo = 0;
    std::atomic<bool> m_isStopped {false};
    std::atomic<int> m_runningWorkers {0};
    std::vector<std::thread> m_workers;
};

} // namespace zk::datamodel
