#include "ZkMediaPlayerPresenter_p.h"

#include "ZkFrameCache.h"
#include "ZkFrameRenderer.h"
#include "ZkMediaPlayerZoomerPresenter_p.h"
#include "timeline/ZkStudioTimeline.h"

#include <limits>
#include <utility>

using zk::datamodel::FrameRenderer;
using zk::datamodel::RenderSnapshot;
using zk::player::Picture;
using zk::player::PictureQueue;

namespace {

// Frames that are ready to be shown: the one that is painted on, above all, and the one that comes next.
constexpr qint64 cacheBytes = qint64(96) << 20;
// Decoded pictures around the playhead, for scrubbing: about 500 of 480p, 80 of 1080p, 20 of 2160p.
constexpr qint64 keptBytes = qint64(256) << 20;

// While nothing is open the playhead follows the ones that it is coupled with wherever they go. Frames
// are reported as int.
constexpr ZkRange<qint64> unlimitedRange {0, std::numeric_limits<int>::max()};

void writeLog(int level, const QString &function, int line, const QString &message)
{
    ZkBaseLog *logger = ZkBaseLog::defaultLogger();
    if (!logger->isEnabled(level))
        return;
    ZkLogRecord record;
    record.logger = logger->name();
    record.level = level;
    record.file = QStringLiteral("MediaPlayer/ZkMediaPlayerPresenter");
    record.line = line;
    record.function = QStringLiteral("ZkMediaPlayerPresenterPrivate::") + function;
    record.message = message;
    logger->write(record);
}

} // namespace

ZkMediaPlayerPresenterPrivate::ZkMediaPlayerPresenterPrivate(ZkMediaPlayerPresenter *presenter)
    : q_ptr(presenter)
    , m_playhead({[this] { return acceptsSeek(); }, [this] { seek(); }})
    , m_queue([this] { return prepareJob(); })
{
    m_playhead.place(unlimitedRange, 0);
    connect(&m_queue, &PictureQueue::rendered, this, &ZkMediaPlayerPresenterPrivate::show);
    connect(&m_queue, &PictureQueue::settled, presenter, &ZkMediaPlayerPresenter::sigSeekFinished);
    connect(&m_zoomer,
            &ZkMediaPlayerZoomerPresenter::sigPropertyChanged,
            presenter,
            &ZkMediaPlayerPresenter::sigPropertyChanged);
    m_playTimer.setSingleShot(true);
    m_playTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_playTimer, &QTimer::timeout, this, &ZkMediaPlayerPresenterPrivate::advance);
}

ZkMediaPlayerPresenterPrivate::~ZkMediaPlayerPresenterPrivate()
{
    if (ZkStudioTimeline *opened = timeline())
        opened->removeEventObserver(this);
}

ZkMediaPlayerPresenterPrivate *ZkMediaPlayerPresenterPrivate::get(ZkMediaPlayerPresenter *presenter)
{
    return presenter->d_func();
}

void ZkMediaPlayerPresenterPrivate::setViewport(const QSizeF &size, qreal devicePixelRatio)
{
    ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->setViewport(size, devicePixelRatio);
}

bool ZkMediaPlayerPresenterPrivate::open(const ZkMediaPlayerOpenParam &param)
{
    ZkStudioTimeline *timeline =
        param.kind == ZKPLAYER::OpenTimeline ? ZkStudioTimeline::fromHandle(param.handle) : nullptr;
    release();
    if (!timeline) {
        writeLog(ZKLOG::Warning,
                 QStringLiteral("open"),
                 __LINE__,
                 QStringLiteral("there is no timeline with the handle %1").arg(param.handle));
        setState(ZKPLAYER::StoppedState);
        return false;
    }
    attach(timeline, param);
    if (m_state != ZKPLAYER::TrackingState)
        setState(ZKPLAYER::OpeningState);
    ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->reportZoom();
    reportFrame();
    if (param.showFirstFrame)
        m_queue.request(PictureQueue::Awaited);
    else
        finishOpening();
    return isOpen();
}

void ZkMediaPlayerPresenterPrivate::attach(ZkStudioTimeline *timeline,
                                           const ZkMediaPlayerOpenParam &param)
{
    m_handle = param.handle;
    m_renderer = std::make_shared<FrameRenderer>(
        std::make_shared<zk::media::FrameCache>(cacheBytes), keptBytes);
    m_frameRate = timeline->frameRate();
    ZkRange<qint64> range = timeline->playheadRange();
    if (param.endFrame > 0)
        range.maximum = qBound(range.minimum, param.endFrame, range.maximum);
    const ZkStudioClip *clip = timeline->clip();
    m_isStill = range.maximum <= range.minimum || (clip && clip->type() == ZKTIMELINE::ImageClip);
    m_speedWhenOpened = param.autoPlay ? 1 : 0;
    if (param.followChanges)
        timeline->addEventObserver(this);
    ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->setSourceSize(timeline->frameSize(),
                                                                       param.keepZoom);
    m_playhead.place(range, param.startFrame);
    notify(&IZkPlayerControlObserver::playerDurationChanged, duration());
}

// Afterwards nothing is open, and neither the timeline nor its file is in use. Reports no state.
void ZkMediaPlayerPresenterPrivate::release()
{
    endPlayback();
    if (!isOpen())
        return;
    if (ZkStudioTimeline *opened = timeline())
        opened->removeEventObserver(this);
    m_handle = 0;
    m_queue.discard();
    m_renderer.reset();
    m_frameRate = 0;
    m_reportedFrame = -1;
    m_playbackStart = -1;
    m_renderedDelivery = 0; // another timeline counts anew
    ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->setSourceSize(QSize(), true);
    m_playhead.place(unlimitedRange, m_playhead.position());
    m_picture = {};
    Q_EMIT pictureChanged();
    notify(&IZkPlayerControlObserver::playerDurationChanged, 0);
}

void ZkMediaPlayerPresenterPrivate::stop()
{
    endPlayback();
    setState(ZKPLAYER::StoppedState);
}

void ZkMediaPlayerPresenterPrivate::detachSource()
{
    release();
    if (m_state != ZKPLAYER::TrackingState)
        setState(ZKPLAYER::StoppedState);
}

void ZkMediaPlayerPresenterPrivate::setMode(int state, int speed)
{
    if (state < ZKPLAYER::StoppedState || state > ZKPLAYER::TrackingState) {
        writeLog(ZKLOG::Warning,
                 QStringLiteral("setMode"),
                 __LINE__,
                 QStringLiteral("there is no state %1").arg(state));
        return;
    }
    if (state == ZKPLAYER::PlayingState && speed != 0) {
        play(speed);
        return;
    }
    endPlayback();
    if (!isOpen() && state != ZKPLAYER::TrackingState)
        state = ZKPLAYER::StoppedState;
    setState(state == ZKPLAYER::PlayingState ? ZKPLAYER::PausedState : state);
}

void ZkMediaPlayerPresenterPrivate::trackingStarted()
{
    endPlayback();
    setState(ZKPLAYER::TrackingState);
}

void ZkMediaPlayerPresenterPrivate::showTrackedFrame(qint64 frame)
{
    if (!isOpen() || m_state != ZKPLAYER::TrackingState)
        return;
    goTo(frame);
}

void ZkMediaPlayerPresenterPrivate::trackingProgress(int percent)
{
    Q_Q(ZkMediaPlayerPresenter);
    Q_EMIT q->sigPercentProgress(percent);
}

void ZkMediaPlayerPresenterPrivate::trackingFinished()
{
    if (m_state == ZKPLAYER::TrackingState)
        setState(isOpen() ? ZKPLAYER::PausedState : ZKPLAYER::StoppedState);
}

void ZkMediaPlayerPresenterPrivate::onTimelineChangedEvent(const ZkTimelineChanges &changes)
{
    Q_UNUSED(changes)
    // Another observer of the same change may have asked for the picture already.
    const ZkStudioTimeline *opened = timeline();
    if (!opened || opened->deliveries() != m_renderedDelivery)
        m_queue.request(PictureQueue::Repaint);
}

bool ZkMediaPlayerPresenterPrivate::canPlay() const
{
    return isOpen() && !m_isStill && m_state != ZKPLAYER::TrackingState;
}

ZkStudioTimeline *ZkMediaPlayerPresenterPrivate::timeline() const
{
    return isOpen() ? ZkStudioTimeline::fromHandle(m_handle) : nullptr;
}

void ZkMediaPlayerPresenterPrivate::setState(int state)
{
    Q_Q(ZkMediaPlayerPresenter);
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT q->sigStateChanged(state);
    notify(&IZkPlayerControlObserver::playerStateChanged, m_state);
}

// A receiver may move the playhead on, which reports the newer frame first; it is not reported again.
void ZkMediaPlayerPresenterPrivate::reportFrame()
{
    Q_Q(ZkMediaPlayerPresenter);
    const qint64 frame = currentFrame();
    if (frame == m_reportedFrame)
        return;
    m_reportedFrame = frame;
    Q_EMIT q->sigFrameChanged(int(frame));
    notify(&IZkPlayerControlObserver::playerFrameChanged, int(currentFrame()));
}

void ZkMediaPlayerPresenterPrivate::play(int speed)
{
    if (!canPlay()) {
        writeLog(ZKLOG::Info,
                 QStringLiteral("play"),
                 __LINE__,
                 QStringLiteral("refused in state %1").arg(m_state));
        return;
    }
    if (m_state == ZKPLAYER::OpeningState)
        m_speedWhenOpened = speed;
    else
        startPlayback(speed);
}

void ZkMediaPlayerPresenterPrivate::startPlayback(int speed)
{
    const ZkRange<qint64> range = m_playhead.frameRange();
    const qint64 last = speed < 0 ? range.minimum : range.maximum;
    if (m_playhead.position() == last)
        goTo(speed < 0 ? range.maximum : range.minimum);
    m_playbackStart = m_playhead.position();
    m_clock.start(m_playhead.position(), m_frameRate * speed);
    m_playTimer.start(m_clock.millisecondsToNextFrame());
    setState(ZKPLAYER::PlayingState);
}

void ZkMediaPlayerPresenterPrivate::endPlayback()
{
    m_playTimer.stop();
    m_speedWhenOpened = 0;
}

void ZkMediaPlayerPresenterPrivate::stopPlay()
{
    endPlayback();
    if (m_state == ZKPLAYER::PlayingState)
        setState(ZKPLAYER::PausedState);
}

// A move of the player's own, which nobody waits for.
void ZkMediaPlayerPresenterPrivate::goTo(qint64 frame)
{
    m_playhead.move(frame);
    m_queue.request(PictureQueue::Passing);
    reportFrame();
}

// Frames that fall due while one is being rendered are dropped, except the last one.
void ZkMediaPlayerPresenterPrivate::advance()
{
    const ZkRange<qint64> range = m_playhead.frameRange();
    const qint64 due = qBound(range.minimum, m_clock.frame(), range.maximum);
    const bool isLast = due == (m_clock.goesBackwards() ? range.minimum : range.maximum);
    if (isLast)
        endPlayback();
    else
        m_playTimer.start(m_clock.millisecondsToNextFrame());
    if (due != m_playhead.position() && (isLast || !m_queue.isBusy()))
        goTo(due);
    if (isLast)
        stopPlay();
}

bool ZkMediaPlayerPresenterPrivate::acceptsSeek() const
{
    return m_state != ZKPLAYER::TrackingState;
}

void ZkMediaPlayerPresenterPrivate::seek()
{
    if (m_playTimer.isActive())
        m_clock.start(m_playhead.position(), m_clock.rate());
    m_queue.request(PictureQueue::Awaited);
    reportFrame();
}

// Of the frame on screen; empty where that is not smaller than the source.
QSize ZkMediaPlayerPresenterPrivate::reducedSize()
{
    const double ratio = ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->devicePixelRatio();
    const QSize shown = (QSizeF(m_zoomer.frameRect().toRect().size()) * ratio).toSize();
    const QSize source = timeline()->frameSize();
    return shown.width() < source.width() ? shown : QSize();
}

PictureQueue::Job ZkMediaPlayerPresenterPrivate::prepareJob()
{
    const ZkStudioTimeline *opened = timeline();
    if (!opened)
        return {};
    m_renderedDelivery = opened->deliveries();
    const RenderSnapshot snapshot(*opened);
    PictureQueue::Job job;
    job.render =
        [renderer = m_renderer, snapshot, frame = currentFrame(), reduced = reducedSize()] {
            const Picture picture = renderer->preview(snapshot, frame, reduced);
            if (picture.whole.isNull()) {
                writeLog(ZKLOG::Warning,
                         QStringLiteral("prepareJob"),
                         __LINE__,
                         QStringLiteral("frame %1 cannot be shown: %2")
                             .arg(frame)
                             .arg(renderer->errorString()));
            }
            return picture;
        };
    if (m_playTimer.isActive() && qFuzzyCompare(m_clock.rate(), m_frameRate))
        job.readAhead = [renderer = m_renderer, snapshot, frame = currentFrame() + 1] {
            renderer->source(snapshot, frame);
        };
    return job;
}

// After a failure the player keeps the picture that it has, and goes on. A frame that fell due while this
// one was being rendered comes right after it, not when the next one is due.
void ZkMediaPlayerPresenterPrivate::show(const Picture &picture)
{
    const bool isFirst = m_picture.whole.isNull() && !picture.whole.isNull();
    if (!picture.whole.isNull()) {
        m_picture = picture;
        Q_EMIT pictureChanged();
    }
    if (isFirst)
        ZkMediaPlayerZoomerPresenterPrivate::get(&m_zoomer)->reportZoom();
    if (m_state == ZKPLAYER::OpeningState)
        finishOpening();
    else if (m_playTimer.isActive())
        advance();
}

void ZkMediaPlayerPresenterPrivate::finishOpening()
{
    const int speed = std::exchange(m_speedWhenOpened, 0);
    if (m_state == ZKPLAYER::TrackingState)
        return;
    if (speed != 0 && !m_isStill)
        startPlayback(speed);
    else
        setState(ZKPLAYER::PausedState);
}
