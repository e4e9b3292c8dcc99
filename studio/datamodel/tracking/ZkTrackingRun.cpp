#include "ZkTrackingRun.h"

#include "../ZkMediaOpening.h"
#include "../segmentation/ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <QMetaObject>

#include <algorithm>
#include <system_error>
#include <utility>

namespace zk::datamodel {

namespace {

// Frames that may wait between two workers: enough to even out a slow one, and of 4K frames not too
// much to hold.
constexpr size_t queueLength = 2;

// Frames that may look like another scene before it is one: a flash is shorter.
constexpr int flashLength = 2;

// How many frames are decoded forward at a time when the way is backward: as many as fit in 128 MiB.
qint64 backwardStretch(const QSize &size)
{
    const qint64 frameBytes = qMax<qint64>(1, 4 * qint64(size.width()) * size.height());
    return qBound<qint64>(2, 128 * 1024 * 1024 / frameBytes, 32);
}

// The connected parts of a mask that are not the same object as what is marked: less than a fifth of
// them is.
cv::Mat partsBeside(const cv::Mat &mask, const cv::Mat &marked)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(mask >= 128, labels, 8, CV_32S);
    cv::Mat beside = cv::Mat::zeros(marked.size(), CV_8U);
    for (int part = 1; part < count; ++part) {
        const cv::Mat pixels = labels == part;
        if (cv::countNonZero(pixels & (marked >= 128)) * 5 < cv::countNonZero(pixels))
            mask.copyTo(beside, pixels);
    }
    return beside;
}

} // namespace

// One frame on the way of a run.
struct TrackingRun::Step
{
    int leg = 0;
    qint64 frame = 0;
    bool isMemory = false; // to learn from, before the leg starts
};

struct TrackingRun::Decoded
{
    Step step;
    cv::Mat pixels;
};

struct TrackingRun::Prepared
{
    Step step;
    zk::engine::PreparedFrame picture;
};

// The tracker's way along the legs.
class TrackingRun::Advancer
{
public:
    explicit Advancer(TrackingRun *run)
        : m_run(run)
        , m_segments(run->m_task.segments)
    {
        for (const TrackingLeg &leg : run->m_task.legs)
            m_length += leg.length();
    }

    // False when the run cannot go on.
    bool take(const Prepared &prepared);

private:
    bool learn(const Prepared &prepared);
    bool start(const TrackingLeg &leg, const Prepared &prepared);
    bool passNode(const Prepared &prepared, const SegmentNodePtr &node);
    bool track(const Prepared &prepared);
    void meetScene(qint64 frame);
    void bridgeFlash();
    void leaveScene();
    void report(qint64 frame, const EncodedMatte &matte, double confidence);
    void standAt(qint64 frame, const SegmentNodePtr &node, const EncodedMatte &matte);
    cv::Mat truthAt(const Prepared &prepared, const SegmentNode &node);
    int percentAt(qint64 frame) const;
    const TrackingLeg &leg() const { return m_run->m_task.legs.at(m_leg); }

    TrackingRun *const m_run;
    const Segments &m_segments;
    int m_leg = -1;
    bool m_hasMemory = false; // of the leg
    qint64 m_length = 0; // frames of all legs
    qint64 m_before = 0; // frames of the legs before this one
    QVector<qint64> m_strange; // the last frames, which look like another scene
    EncodedMatte m_lastMatte; // of the frame before them
    qint64 m_seed = -1; // the last node that was passed
    quint64 m_seedRevision = 0;
};

bool TrackingRun::Advancer::take(const Prepared &prepared)
{
    const Step &step = prepared.step;
    if (m_leg != step.leg) {
        m_before += m_leg < 0 ? 0 : leg().length();
        m_hasMemory = false;
        m_strange.clear();
        m_leg = step.leg;
    }
    if (step.isMemory)
        return learn(prepared);
    if (step.frame == leg().seed)
        return start(leg(), prepared);
    if (m_run->isSkipped(step))
        return true;
    const SegmentNodePtr node = m_segments.node(step.frame);
    if (node && !m_strange.isEmpty())
        leaveScene();
    return node ? passNode(prepared, node) : track(prepared);
}

// A mask that the tracker can do nothing with is none to remember.
bool TrackingRun::Advancer::learn(const Prepared &prepared)
{
    const QImage matte = m_segments.matteAt(prepared.step.frame);
    const cv::Mat truth = pixelsOf(matte).clone();
    m_hasMemory = m_hasMemory ? m_run->m_tracker->correct(prepared.picture, truth)
                              : m_run->m_tracker->start(prepared.picture, truth);
    return true;
}

bool TrackingRun::Advancer::start(const TrackingLeg &leg, const Prepared &prepared)
{
    const QImage matte = m_segments.matteAt(leg.seed);
    const cv::Mat truth = pixelsOf(matte).clone();
    const bool isStarted = m_hasMemory ? m_run->m_tracker->correct(prepared.picture, truth)
                                       : m_run->m_tracker->start(prepared.picture, truth);
    if (!isStarted)
        return false;
    m_seed = -1;
    if (const SegmentNodePtr node = m_segments.node(leg.seed)) {
        standAt(leg.seed, node, node->result);
        return true;
    }
    // Going on where an earlier run in this direction has been: it is the same run for the nodes.
    const TrackedMattes before = m_segments.tracked().value(leg.seed);
    const TrackedSide &side = leg.isForward() ? before.forward : before.backward;
    m_seed = side.seed;
    m_seedRevision = side.seedRevision;
    return true;
}

// The node's own mask stands in for the result, in case that the node is undone.
void TrackingRun::Advancer::standAt(qint64 frame,
                                    const SegmentNodePtr &node,
                                    const EncodedMatte &matte)
{
    m_seed = frame;
    m_seedRevision = node->revision;
    report(frame, matte, 1);
}

// Of several objects, those that the node does not mark go on as they were tracked; what was erased on
// the frame does not.
cv::Mat TrackingRun::Advancer::truthAt(const Prepared &prepared, const SegmentNode &node)
{
    const QImage marked = node.result.decoded();
    if (m_segments.isSingleObject())
        return pixelsOf(marked).clone();
    cv::Mat others = m_run->m_tracker->advance(prepared.picture).matte;
    if (others.empty())
        return pixelsOf(marked).clone();
    const QImage erased = node.erase.decoded();
    if (!erased.isNull())
        others.setTo(0, pixelsOf(erased));
    return cv::max(partsBeside(others, pixelsOf(marked)), pixelsOf(marked));
}

bool TrackingRun::Advancer::passNode(const Prepared &prepared, const SegmentNodePtr &node)
{
    const cv::Mat truth = truthAt(prepared, *node);
    if (!m_run->m_tracker->correct(prepared.picture, truth))
        return false;
    const bool isOwn = m_segments.isSingleObject();
    standAt(prepared.step.frame, node, isOwn ? node->result : EncodedMatte(greyImage(truth)));
    return true;
}

bool TrackingRun::Advancer::track(const Prepared &prepared)
{
    const zk::engine::TrackedFrame result = m_run->m_tracker->advance(prepared.picture);
    if (result.matte.empty())
        return false;
    if (result.sceneCut) {
        meetScene(prepared.step.frame);
        return true;
    }
    bridgeFlash();
    report(prepared.step.frame, EncodedMatte(greyImage(result.matte)), result.confidence);
    return true;
}

void TrackingRun::Advancer::meetScene(qint64 frame)
{
    m_strange.append(frame);
    if (m_strange.size() > flashLength || frame == leg().last)
        leaveScene();
}

// The scene has come back: the object was where it had been, as well as anybody can tell.
void TrackingRun::Advancer::bridgeFlash()
{
    const QVector<qint64> frames = std::exchange(m_strange, {});
    for (const qint64 frame : frames)
        report(frame, m_lastMatte, 0);
}

// Nothing is known of the object in another scene until a node shows it there.
void TrackingRun::Advancer::leaveScene()
{
    TrackedFrame left;
    left.frame = m_strange.first();
    left.isForward = leg().isForward();
    left.skippedTo = m_strange.last();
    m_strange.clear();
    while (left.skippedTo != leg().last && !m_segments.node(left.skippedTo + leg().step()))
        left.skippedTo += leg().step();
    left.percent = percentAt(left.skippedTo);
    m_run->skip(m_leg, left.frame, left.skippedTo);
    m_run->postTracked(left);
}

int TrackingRun::Advancer::percentAt(qint64 frame) const
{
    const qint64 done = m_before + qAbs(frame - leg().seed);
    return int(done * 100 / qMax<qint64>(1, m_length));
}

void TrackingRun::Advancer::report(qint64 frame, const EncodedMatte &matte, double confidence)
{
    TrackedFrame tracked;
    tracked.frame = frame;
    tracked.isForward = leg().isForward();
    tracked.percent = percentAt(frame);
    m_lastMatte = matte;
    tracked.side = {matte, float(confidence), m_seed, m_seedRevision, m_run->m_serial};
    m_run->postTracked(tracked);
}

TrackingRun::TrackingRun(const TrackingTask &task, QObject *context, const Receiver &receiver)
    : m_task(task)
    , m_context(context)
    , m_receiver(receiver)
    , m_serial(Segments::nextRevision())
    , m_tracker(task.engine->createTracker())
    , m_decoded(std::make_unique<BoundedQueue<Decoded>>(queueLength))
    , m_prepared(std::make_unique<BoundedQueue<Prepared>>(queueLength))
{
    startWorker(&TrackingRun::decode);
    startWorker(&TrackingRun::prepare);
    startWorker(&TrackingRun::advance);
}

TrackingRun::~TrackingRun()
{
    stop();
    for (std::thread &worker : m_workers)
        worker.join();
}

void TrackingRun::stop()
{
    m_isStopped = true;
    m_decoded->abort();
    m_prepared->abort();
}

void TrackingRun::startWorker(void (TrackingRun::*work)())
{
    ++m_runningWorkers;
    try {
        m_workers.emplace_back([this, work] {
            guarded([=] { (this->*work)(); });
            --m_runningWorkers;
        });
    } catch (const std::system_error &exception) { // no more threads
        --m_runningWorkers;
        fail(QString::fromLocal8Bit(exception.what()));
    }
}

template<typename Work>
void TrackingRun::guarded(Work work)
{
    try {
        work();
    } catch (const std::exception &exception) { // out of memory, above all
        fail(QString::fromLocal8Bit(exception.what()));
    }
}

void TrackingRun::decode()
{
    QString error;
    const auto reader = openMedia(m_task.media, &error);
    if (!reader) {
        fail(error);
        return;
    }
    for (int leg = 0; leg < m_task.legs.size(); ++leg) {
        if (!decodeMemory(reader.get(), leg) || !decodeLeg(reader.get(), leg))
            return;
    }
    m_decoded->close();
}

bool TrackingRun::decodeMemory(zk::media::MediaReader *reader, int leg)
{
    const QVector<qint64> frames = memoryOf(m_task.segments, m_task.legs.at(leg));
    return std::all_of(frames.begin(), frames.end(), [=](qint64 frame) {
        Decoded decoded;
        return decodeFrame(reader, {leg, frame, true}, &decoded)
            && m_decoded->push(std::move(decoded));
    });
}

// Backward in stretches that are decoded forward: one seek each instead of one for every frame.
bool TrackingRun::decodeLeg(zk::media::MediaReader *reader, int leg)
{
    const TrackingLeg &way = m_task.legs.at(leg);
    const qint64 stretch = way.isForward() ? 1 : backwardStretch(m_task.media.size);
    for (qint64 done = 0; done <= way.length();) {
        const qint64 count = qMin(stretch, way.length() + 1 - done);
        const qint64 from = way.isForward() ? way.seed + done : way.seed - done - (count - 1);
        if (!decodeStretch(reader, leg, from, count))
            return false;
        done += count;
    }
    return true;
}

bool TrackingRun::decodeStretch(zk::media::MediaReader *reader, int leg, qint64 from, qint64 count)
{
    std::vector<Decoded> frames;
    for (qint64 frame = from; frame < from + count && !m_isStopped; ++frame) {
        const Step step {leg, frame, false};
        Decoded decoded;
        if (isSkipped(step))
            continue;
        if (!decodeFrame(reader, step, &decoded))
            return false;
        frames.push_back(std::move(decoded));
    }
    // Latest first; a stretch of a forward leg is one frame.
    for (auto it = frames.rbegin(); it != frames.rend(); ++it) {
        if (!m_decoded->push(std::move(*it)))
            return false;
    }
    return !m_isStopped;
}

bool TrackingRun::decodeFrame(zk::media::MediaReader *reader, const Step &step, Decoded *decoded)
{
    const QImage image = reader->frameAt(m_task.inFrame + step.frame);
    if (image.isNull())
        fail(QStringLiteral("Frame %1 cannot be read.").arg(step.frame));
    // The prepared frame keeps the pixels, so they need an owner that travels with them.
    else
        *decoded = {step, pixelsOf(image).clone()};
    return !image.isNull();
}

void TrackingRun::skip(int leg, qint64 first, qint64 last)
{
    const std::lock_guard<std::mutex> lock(m_skipMutex);
    m_skippedLeg = leg;
    m_skippedFrom = first;
    m_skippedTo = last;
}

bool TrackingRun::isSkipped(const Step &step) const
{
    const std::lock_guard<std::mutex> lock(m_skipMutex);
    const auto range = std::minmax(m_skippedFrom, m_skippedTo);
    return step.leg == m_skippedLeg && step.frame >= range.first && step.frame <= range.second;
}

void TrackingRun::prepare()
{
    zk::engine::PreparedFrame previous;
    Decoded decoded;
    while (m_decoded->pop(&decoded)) {
        const Step &step = decoded.step;
        const bool isFirst = step.isMemory || step.frame == m_task.legs.at(step.leg).seed;
        previous = isFirst ? m_tracker->prepareFirst(decoded.pixels)
                           : m_tracker->prepare(previous, decoded.pixels);
        if (!m_prepared->push({step, previous}))
            return;
    }
    m_prepared->close();
}

void TrackingRun::advance()
{
    Advancer advancer(this);
    Prepared prepared;
    while (m_prepared->pop(&prepared)) {
        if (!advancer.take(prepared)) {
            fail(QStringLiteral("The object cannot be tracked into frame %1.")
                     .arg(prepared.step.frame));
            return;
        }
    }
    if (!m_isStopped)
        postFinished({});
}

// Ends the run from any worker. Whoever waits for a queue comes back.
void TrackingRun::fail(const QString &error)
{
    if (m_isStopped.exchange(true))
        return;
    postFinished(error);
    stop();
}

void TrackingRun::postTracked(const TrackedFrame &tracked)
{
    QMetaObject::invokeMethod(
        m_context,
        [serial = m_serial, receive = m_receiver.tracked, tracked] { receive(serial, tracked); },
        Qt::QueuedConnection);
}

void TrackingRun::postFinished(const QString &error)
{
    QMetaObject::invokeMethod(
        m_context,
        [serial = m_serial, receive = m_receiver.finished, error] { receive(serial, error); },
        Qt::QueuedConnection);
}

} // namespace zk::datamodel
