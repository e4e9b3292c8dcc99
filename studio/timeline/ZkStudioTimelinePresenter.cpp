#include "ZkStudioTimelinePresenter.h"

#include "ZkWidgets.h"

#include <algorithm>

using namespace zk::datamodel;
using namespace zk::timeline;

namespace {

// Moves that come faster than this belong to one run of the playhead.
constexpr int runningMs = 400;
// Where the playhead comes back into sight, as a part of the width.
constexpr double returnPart = 0.1;

} // namespace

ZkStudioTimelinePresenter::ZkStudioTimelinePresenter(QObject *parent)
    : ZTimelinePresenter(parent)
{ }

ZkStudioTimelinePresenter::~ZkStudioTimelinePresenter()
{
    detach();
}

void ZkStudioTimelinePresenter::setTimeline(ZkStudioTimeline *timeline)
{
    detach();
    m_handle = timeline ? timeline->handle() : 0;
    attach();
    m_position = position();
    m_isScrolledAway = false;
    m_selection = NodeSelection();
    takeClip();
    m_scale.fit();
    m_marks.read(service(), m_scale.frameCount());
    Q_EMIT sigTimelineChanged();
    Q_EMIT sigSelectionChanged();
    reportScale();
}

void ZkStudioTimelinePresenter::attach()
{
    if (ZkStudioTimeline *shown = timeline()) {
        shown->addEventObserver(this);
        shown->playhead()->addObserver(this);
    }
    if (ZkStudioSmartKeyingService *shown = service())
        shown->addTrackedObserver(this);
}

void ZkStudioTimelinePresenter::detach()
{
    if (ZkStudioTimeline *shown = timeline()) {
        shown->removeEventObserver(this);
        shown->playhead()->removeObserver(this);
    }
    if (ZkStudioSmartKeyingService *shown = service())
        shown->removeTrackedObserver(this);
}

ZkStudioSmartKeyingService *ZkStudioTimelinePresenter::service() const
{
    const ZkStudioTimeline *shown = timeline();
    return shown ? shown->shownService() : nullptr;
}

void ZkStudioTimelinePresenter::fitTimeline()
{
    m_scale.fit();
    reportScale();
}

void ZkStudioTimelinePresenter::setZoomSlider(ZkZoomSlider *slider)
{
    if (m_slider)
        m_slider->disconnect(this);
    m_slider = slider;
    if (!slider)
        return;
    slider->setValue(m_scale.zoomValue());
    connect(
        slider, &ZkZoomSlider::sigValueChanged, this, [this](int value) { setZoomValue(value); });
}

// About the playhead, which is what the user looks at, or else about the middle.
void ZkStudioTimelinePresenter::setZoomValue(int value)
{
    const bool hasPlayhead = m_scale.isVisible(m_position);
    m_scale.setZoomValue(value, hasPlayhead ? m_scale.centreOf(m_position) : m_scale.width() / 2);
    reportScale();
}

void ZkStudioTimelinePresenter::removeSelectedSmartKeyingNode()
{
    ZkStudioSmartKeyingService *shown = service();
    const QVector<qint64> frames = m_selection.frames();
    if (!shown || isTracking() || frames.isEmpty())
        return;
    const bool isOne = frames.size() == 1;
    // Whoever hears of it may delete the presenter: nothing is done here afterwards.
    shown->removeNodes(frames, isOne ? tr("Remove segment node") : tr("Remove segment nodes"));
}

void ZkStudioTimelinePresenter::setViewWidth(double width)
{
    if (width == m_scale.width())
        return;
    m_scale.setWidth(width);
    reportScale();
}

void ZkStudioTimelinePresenter::zoomBy(double factor, double x)
{
    m_scale.zoomTo(m_scale.pixelsPerFrame() * factor, x);
    m_isScrolledAway = !m_scale.isVisible(m_position);
    reportScale();
}

void ZkStudioTimelinePresenter::scrollTo(double offset)
{
    const double before = m_scale.offset();
    m_scale.setOffset(offset);
    if (m_scale.offset() == before)
        return;
    m_isScrolledAway = !m_scale.isVisible(m_position);
    reportScale();
}

void ZkStudioTimelinePresenter::reportScale()
{
    if (m_slider)
        m_slider->setValue(m_scale.zoomValue());
    Q_EMIT sigScaleChanged();
}

qint64 ZkStudioTimelinePresenter::position() const
{
    const ZkStudioTimeline *shown = timeline();
    return shown ? shown->playhead()->position() : 0;
}

void ZkStudioTimelinePresenter::seek(qint64 frame)
{
    const ZkStudioTimeline *shown = timeline();
    if (!shown || isTracking())
        return;
    m_isScrolledAway = false; // who sends the playhead somewhere wants to see it
    shown->playhead()->setPosition(frame);
}

void ZkStudioTimelinePresenter::goToNode(int direction, SelectionMode mode)
{
    const QVector<qint64> &nodes = m_marks.nodes();
    const qint64 from = position();
    auto node = direction > 0 ? std::upper_bound(nodes.cbegin(), nodes.cend(), from)
                              : std::lower_bound(nodes.cbegin(), nodes.cend(), from);
    if (node == (direction > 0 ? nodes.cend() : nodes.cbegin()))
        return;
    const qint64 frame = direction > 0 ? *node : *--node;
    selectNode(frame, mode);
    seek(frame);
}

void ZkStudioTimelinePresenter::goToFrameToCorrect()
{
    if (frameToCorrect() == position()) {
        service()->setChecked(position());
        readMarks();
    }
    if (frameToCorrect() >= 0)
        seek(frameToCorrect());
}

double ZkStudioTimelinePresenter::frameRate() const
{
    const ZkStudioTimeline *shown = timeline();
    return shown ? shown->frameRate() : 0;
}

bool ZkStudioTimelinePresenter::isTracking() const
{
    const ZkStudioSmartKeyingService *shown = service();
    return shown && (shown->isLocked() || shown->workMode() == ZKSMARTKEYING::TrackingMode);
}

void ZkStudioTimelinePresenter::selectNode(qint64 frame, SelectionMode mode)
{
    if (m_selection.select(frame, mode, m_marks.nodes()))
        Q_EMIT sigSelectionChanged();
}

void ZkStudioTimelinePresenter::selectAllNodes()
{
    if (m_selection.selectAll(m_marks.nodes()))
        Q_EMIT sigSelectionChanged();
}

void ZkStudioTimelinePresenter::clearSelection()
{
    if (m_selection.clear())
        Q_EMIT sigSelectionChanged();
}

// True when it is another one. Fits it then.
bool ZkStudioTimelinePresenter::takeClip()
{
    const ZkStudioTimeline *shown = timeline();
    const ZkStudioClip *clip = shown ? shown->clip() : nullptr;
    const QString path = clip ? clip->media().path : QString();
    const qint64 inFrame = clip ? clip->inFrame() : 0;
    const qint64 count = clip ? clip->frameCount() : 0;
    if (path == m_mediaPath && inFrame == m_inFrame && count == m_scale.frameCount())
        return false;
    m_mediaPath = path;
    m_inFrame = inFrame;
    m_scale.setFrameCount(count);
    return true;
}

void ZkStudioTimelinePresenter::onTimelineChangedEvent(const ZkTimelineChanges &changes)
{
    attach(); // the clip may be another one
    const bool isOtherClip = takeClip();
    if (isOtherClip || changes.contains(ZKTIMELINE::SegmentChange))
        readMarks();
    if (isOtherClip) {
        Q_EMIT sigTimelineChanged();
        reportScale();
    }
}

void ZkStudioTimelinePresenter::readMarks()
{
    m_marks.read(service(), m_scale.frameCount());
    const bool hasOtherSelection = m_selection.keepOnly(m_marks.nodes());
    Q_EMIT sigMarksChanged();
    if (hasOtherSelection)
        Q_EMIT sigSelectionChanged();
}

void ZkStudioTimelinePresenter::onTrackedEvent(qint64 frame)
{
    const ZkStudioSmartKeyingService *shown = service();
    if (!shown)
        return;
    m_marks.readFrame(*shown, frame);
    Q_EMIT sigFrameTracked(frame);
}

void ZkStudioTimelinePresenter::onPlayheadMoved(qint64 frame)
{
    const qint64 from = m_position;
    m_position = frame;
    follow(frame);
    m_lastMove.start();
    Q_EMIT sigPlayheadMoved(from, frame);
}

// Page by page: a view that creeps along with the playhead would have to be painted all over for every
// frame.
void ZkStudioTimelinePresenter::follow(qint64 frame)
{
    const bool isRunning = m_lastMove.isValid() && m_lastMove.elapsed() < runningMs;
    if (m_scale.isVisible(frame)) {
        m_isScrolledAway = false;
        return;
    }
    if (m_isScrolledAway && isRunning)
        return;
    m_isScrolledAway = false;
    const bool isAhead = m_scale.centreOf(frame) > m_scale.width();
    const double x = m_scale.width() * (isAhead ? returnPart : 1 - returnPart);
    m_scale.setOffset(m_scale.offset() + m_scale.centreOf(frame) - x);
    reportScale();
}
