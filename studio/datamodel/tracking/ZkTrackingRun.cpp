#include "ZkTrackingRun.h"

#include "../ZkMediaOpening.h"
#include "../segmentation/ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <QMetaObject>

#include <system_error>

namespace zk::datamodel {

namespace {

// Frames that may wait between two workers: enough to even out a slow one, and of 4K frames not too
// much to hold.
constexpr size_t queueLength = 2;

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

struct TrackingRun::Decoded
{
    int leg = 0;
    qint64 frame = 0;
    cv::Mat pixels;
};

struct TrackingRun::Prepared
{
    int leg = 0;
    qint64 frame = 0;
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

    bool take(const Prepared &prepared);

private:
    bool start(const TrackingLeg &leg, const Prepared &prepared);
    bool passNode(const Prepared &prepared, const SegmentNodePtr &node);
    bool track(const Prepared &prepared);
    void report(qint64 frame, const EncodedMatte &matte, double confidence);
    void standAt(qint64 frame, const SegmentNodePtr &node, const EncodedMatte &matte);
    cv::Mat truthAt(const Prepared &prepared, const SegmentNode &node);
    const TrackingLeg &leg() const { return m_run->m_task.legs.at(m_leg); }

    TrackingRun *const m_run;
    const Segments &m_segments;
    int m_leg = 0;
    qint64 m_length = 0; // frames of all legs
    qint64 m_done = 0;
    qint64 m_seed = -1; // the last node that was passed
    quint64 m_seedRevision = 0;
};

bool TrackingRun::Advancer::take(const Prepared &prepared)
{
    m_leg = prepared.leg;
    if (prepared.frame == leg().seed)
        return start(leg(), prepared);
    ++m_done;
    const SegmentNodePtr node = m_segments.node(prepared.frame);
    return node ? passNode(prepared, node) : track(prepared);
}

bool TrackingRun::Advancer::start(const TrackingLeg &leg, const Prepared &prepared)
{
    const QImage matte = m_segments.matteAt(leg.seed);
    if (!m_run->m_tracker->start(prepared.picture, pixelsOf(matte).clone()))
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
    standAt(prepared.frame, node, isOwn ? node->result : EncodedMatte(greyImage(truth)));
    return true;
}

bool TrackingRun::Advancer::track(const Prepared &prepared)
{
    const zk::engine::TrackedFrame result = m_run->m_tracker->advance(prepared.picture);
    if (result.matte.empty())
        return false;
    report(prepared.frame, EncodedMatte(greyImage(result.matte)), result.confidence);
    return true;
}

void TrackingRun::Advancer::report(qint64 frame, const EncodedMatte &matte, double confidence)
{
    TrackedFrame tracked;
    tracked.frame = frame;
    tracked.isForward = leg().isForward();
    tracked.percent = int(m_done * 100 / qMax<qint64>(1, m_length));
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
        if (!decodeLeg(reader.get(), leg))
            return;
    }
    m_decoded->close();
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
        const QImage image = reader->frameAt(m_task.inFrame + frame);
        if (image.isNull()) {
            fail(QStringLiteral("Frame %1 cannot be read.").arg(frame));
            return false;
        }
        // The prepared frame keeps the pixels, so they need an owner that travels with them.
        frames.push_back({leg, frame, pixelsOf(image).clone()});
    }
    // Latest first; a stretch of a forward leg is one frame.
    for (auto it = frames.rbegin(); it != frames.rend(); ++it) {
        if (!m_decoded->push(std::move(*it)))
            return false;
    }
    return !m_isStopped;
}

void TrackingRun::prepare()
{
    zk::engine::PreparedFrame previous;
    Decoded decoded;
    while (m_decoded->pop(&decoded)) {
        const bool isFirst = decoded.frame == m_task.legs.at(decoded.leg).seed;
        previous = isFirst ? m_tracker->prepareFirst(decoded.pixels)
                           : m_tracker->prepare(previous, decoded.pixels);
        if (!m_prepared->push({decoded.leg, decoded.frame, previous}))
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
            fail(QStringLiteral("The object cannot be tracked into frame %1.").arg(prepared.frame));
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
