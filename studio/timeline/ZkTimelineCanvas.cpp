#include "ZkTimelineCanvas.h"

#include "ZkStudioTimelinePresenter.h"
#include "ZkTimelineAccessible.h"
#include "ZkTimelineRuler.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace zk::timeline {

namespace {

constexpr int fontPixels = 11;
constexpr double wheelNotch = 120; // what Qt calls one step of a wheel
constexpr double zoomPerNotch = 1.25;
constexpr double scrollPerNotch = 80; // widget pixels
constexpr int edgeMs = 30;
constexpr double edgeSpeed = 0.25; // of the way beyond the edge, each time

NodeSelection::Mode selectionMode(Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ShiftModifier)
        return NodeSelection::Extend;
    return modifiers & Qt::ControlModifier ? NodeSelection::Toggle : NodeSelection::Replace;
}

} // namespace

TimelineCanvas::TimelineCanvas(ZkStudioTimelinePresenter *presenter, QWidget *parent)
    : QWidget(parent)
    , m_presenter(presenter)
    , m_colors(CanvasColors::ofSkin())
{
    installTimelineAccessibility();
    setObjectName(QStringLiteral("ZkTimelineCanvas"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_look.font = font();
    m_look.font.setPixelSize(fontPixels);
    retranslate();
    connectPresenter();
    onTimelineChanged();
}

void TimelineCanvas::connectPresenter()
{
    using Presenter = ZkStudioTimelinePresenter;
    connect(m_presenter, &Presenter::sigTimelineChanged, this, &TimelineCanvas::onTimelineChanged);
    connect(m_presenter, &Presenter::sigPlayheadMoved, this, &TimelineCanvas::onPlayheadMoved);
    connect(m_presenter, &Presenter::sigFrameTracked, this, &TimelineCanvas::onFrameTracked);
    connect(m_presenter, &Presenter::sigScaleChanged, this, [this] {
        prepareFilmstrip();
        update();
    });
    connect(m_presenter, &Presenter::sigMarksChanged, this, [this] { update(); });
    connect(m_presenter, &Presenter::sigSelectionChanged, this, [this] { update(); });
    connect(&m_filmstrip, &Filmstrip::sigLoaded, this, [this] {
        update(CanvasRows(size()).strip.toAlignedRect());
    });
}

void TimelineCanvas::retranslate()
{
    setAccessibleName(tr("Timeline"));
    setAccessibleDescription(
        tr("Left and Right move the playhead, Page Up and Page Down go to segment nodes."));
}

QSize TimelineCanvas::sizeHint() const
{
    return {480, CanvasRows::goodHeight};
}

QSize TimelineCanvas::minimumSizeHint() const
{
    return {160, CanvasRows::leastHeight};
}

QString TimelineCanvas::positionText() const
{
    return m_presenter->timeline() ? timeCode(m_presenter->position(), m_presenter->frameRate())
                                   : QString();
}

void TimelineCanvas::onTimelineChanged()
{
    const ZkStudioTimeline *timeline = m_presenter->timeline();
    endScrub();
    setHovered(-1, false);
    m_filmstrip.setClip(timeline ? timeline->clip() : nullptr);
    prepareFilmstrip();
    setEnabled(timeline != nullptr);
    update();
}

void TimelineCanvas::onPlayheadMoved(qint64 from, qint64 to)
{
    updateColumn(TimelinePainter::playheadArea(*m_presenter, from, size()));
    updateColumn(TimelinePainter::playheadArea(*m_presenter, to, size()));
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, to);
        QAccessible::updateAccessibility(&event);
    }
}

void TimelineCanvas::onFrameTracked(qint64 frame)
{
    if (m_wasTracking == m_presenter->isTracking())
        updateColumn(TimelinePainter::playheadArea(*m_presenter, frame, size()));
    else
        update(); // nodes look different from now on
}

void TimelineCanvas::updateColumn(const QRectF &area)
{
    update(area.toAlignedRect());
}

// Nothing is decoded for what nobody sees.
void TimelineCanvas::prepareFilmstrip()
{
    if (isVisible())
        m_filmstrip.prepare(
            m_presenter->scale(), CanvasRows(size()).strip.height(), devicePixelRatioF());
}

bool TimelineCanvas::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    if (!showTip(help->pos(), help->globalPos())) {
        QToolTip::hideText();
        event->ignore();
    }
    return true;
}

void TimelineCanvas::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void TimelineCanvas::paintEvent(QPaintEvent *event)
{
    m_look.hasFocus = hasFocus();
    m_wasTracking = m_presenter->isTracking();
    QPainter painter(this);
    TimelinePainter(&painter, *m_presenter, size(), m_colors, m_look)
        .paint(event->rect(), m_filmstrip);
}

void TimelineCanvas::resizeEvent(QResizeEvent *)
{
    m_presenter->setViewWidth(width());
    prepareFilmstrip();
}

void TimelineCanvas::showEvent(QShowEvent *)
{
    prepareFilmstrip();
}

void TimelineCanvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const qint64 node = nodeAt(event->localPos());
    if (node >= 0) {
        m_presenter->selectNode(node, selectionMode(event->modifiers()));
        return;
    }
    if (isOnDoubt(event->localPos())) {
        m_presenter->goToFrameToCorrect();
        return;
    }
    if (CanvasRows(size()).nodes.contains(event->localPos()) && !event->modifiers())
        m_presenter->clearSelection();
    m_isScrubbing = true;
    scrub(event->localPos().x());
}

void TimelineCanvas::mouseDoubleClickEvent(QMouseEvent *event)
{
    const qint64 node = nodeAt(event->localPos());
    if (event->button() == Qt::LeftButton && node >= 0)
        m_presenter->seek(node);
    else if (!isOnDoubt(event->localPos())) // which would say that the frame is right
        mousePressEvent(event);
}

void TimelineCanvas::mouseMoveEvent(QMouseEvent *event)
{
    if (m_isScrubbing)
        scrub(event->localPos().x());
    else
        setHovered(nodeAt(event->localPos()), isOnDoubt(event->localPos()));
}

void TimelineCanvas::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        endScrub();
}

void TimelineCanvas::leaveEvent(QEvent *)
{
    setHovered(-1, false);
}

void TimelineCanvas::scrub(double x)
{
    m_scrubX = x;
    m_presenter->seek(m_presenter->scale().frameAt(qBound(0.0, x, double(width()))));
    if (x >= 0 && x <= width())
        m_edgeTimer.stop();
    else if (!m_edgeTimer.isActive())
        m_edgeTimer.start(edgeMs, this);
}

void TimelineCanvas::endScrub()
{
    m_isScrubbing = false;
    m_edgeTimer.stop();
}

void TimelineCanvas::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_edgeTimer.timerId())
        return;
    const double beyond = m_scrubX < 0 ? m_scrubX : m_scrubX - width();
    m_presenter->scrollTo(m_presenter->scale().offset() + beyond * edgeSpeed);
    scrub(m_scrubX);
}

void TimelineCanvas::setHovered(qint64 node, bool isDoubt)
{
    if (node == m_look.hoveredNode && isDoubt == m_look.isDoubtHovered)
        return;
    m_look.hoveredNode = node;
    m_look.isDoubtHovered = isDoubt;
    if (node >= 0 || isDoubt)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    update();
}

qint64 TimelineCanvas::nodeAt(const QPointF &position) const
{
    if (!CanvasRows(size()).nodes.contains(position))
        return -1;
    const TimelineScale &scale = m_presenter->scale();
    qint64 nearest = -1;
    double distance = TimelinePainter::nodeReach;
    for (const qint64 node : m_presenter->marks().nodes()) {
        const double away = std::abs(scale.centreOf(node) - position.x());
        if (away <= distance) {
            distance = away;
            nearest = node;
        }
    }
    return nearest;
}

QRect TimelineCanvas::nodeArea(qint64 frame) const
{
    const double reach = TimelinePainter::nodeReach;
    const QRectF row = CanvasRows(size()).nodes;
    const double x = m_presenter->scale().centreOf(frame);
    return QRectF(x - reach, row.top(), 2 * reach, row.height()).toAlignedRect();
}

bool TimelineCanvas::isOnDoubt(const QPointF &position) const
{
    return TimelinePainter::doubtArea(*m_presenter, size()).contains(position);
}

bool TimelineCanvas::showTip(const QPoint &position, const QPoint &globalPosition)
{
    const qint64 node = nodeAt(position);
    if (node >= 0)
        QToolTip::showText(globalPosition,
                           tr("Segment node at %1").arg(timeCode(node, m_presenter->frameRate())),
                           this,
                           nodeArea(node));
    else if (isOnDoubt(position))
        QToolTip::showText(globalPosition,
                           tr("Least certain here: check this frame"),
                           this,
                           TimelinePainter::doubtArea(*m_presenter, size()).toAlignedRect());
    else
        return false;
    return true;
}

// Trackpads tell pixels and both directions, mice notches of one wheel.
void TimelineCanvas::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (m_isScrubbing)
        return;
    const QPoint angle = event->angleDelta();
    const double notches = (angle.y() != 0 ? angle.y() : angle.x()) / wheelNotch;
    if (event->modifiers() & Qt::ControlModifier) {
        m_presenter->zoomBy(std::pow(zoomPerNotch, notches), event->position().x());
        return;
    }
    const QPoint pixels = event->pixelDelta();
    const double way = pixels.isNull()
        ? notches * scrollPerNotch
        : (std::abs(pixels.x()) > std::abs(pixels.y()) ? pixels.x() : pixels.y());
    m_presenter->scrollTo(m_presenter->scale().offset() - way);
}

void TimelineCanvas::keyPressEvent(QKeyEvent *event)
{
    if (!handleKey(event))
        QWidget::keyPressEvent(event);
}

bool TimelineCanvas::handleKey(const QKeyEvent *event)
{
    const qint64 frame = m_presenter->position();
    const auto nodeMode =
        event->modifiers() & Qt::ShiftModifier ? NodeSelection::Extend : NodeSelection::Replace;
    if (event->matches(QKeySequence::SelectAll)) {
        m_presenter->selectAllNodes();
        return true;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        m_presenter->seek(frame - 1);
        return true;
    case Qt::Key_Right:
        m_presenter->seek(frame + 1);
        return true;
    case Qt::Key_Home:
        m_presenter->seek(0);
        return true;
    case Qt::Key_End:
        m_presenter->seek(m_presenter->scale().frameCount() - 1);
        return true;
    case Qt::Key_PageUp:
        m_presenter->goToNode(-1, nodeMode);
        return true;
    case Qt::Key_PageDown:
        m_presenter->goToNode(1, nodeMode);
        return true;
    case Qt::Key_Delete:
        m_presenter->removeSelectedSmartKeyingNode();
        return true;
    default:
        return false;
    }
}

} // namespace zk::timeline
