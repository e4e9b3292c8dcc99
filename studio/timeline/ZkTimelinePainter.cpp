#include "ZkTimelinePainter.h"

#include "ZkFilmstrip.h"
#include "ZkStudioTimelinePresenter.h"
#include "ZkTimelineRuler.h"
#include "ZkWidgets.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace zk::timeline {

namespace {

// Widget pixels.
constexpr double rulerHeight = 30;
constexpr double labelsBottom = 18; // the handle of the playhead has its place below
constexpr double nodesHeight = 20;
constexpr double bandHeight = 6;
constexpr double gap = 4;
constexpr double minorTick = 4;
constexpr double majorTick = 9;
constexpr double nodeHalf = 6;
constexpr double handleHalf = 6;
constexpr double handleHeight = 12;
constexpr double doubtHalf = 7; // width of its mark
constexpr double doubtHeight = 12;
constexpr double labelInset = 1; // a time code begins above its mark
constexpr double stripRadius = 3;
// From this width on, the cell that the playhead stands in can be told from its neighbours.
constexpr double wideCell = 5;

constexpr double dimmest = 0.3; // of the colour of the tracked range, where the object was lost

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

QColor mixed(const QColor &from, const QColor &to, double part)
{
    const auto channel = [=](int a, int b) { return int(std::lround(a + part * (b - a))); };
    return QColor(channel(from.red(), to.red()),
                  channel(from.green(), to.green()),
                  channel(from.blue(), to.blue()));
}

QPainterPath diamond(const QPointF &middle, double half)
{
    QPainterPath path(middle - QPointF(0, half));
    path.lineTo(middle + QPointF(half, 0));
    path.lineTo(middle + QPointF(0, half));
    path.lineTo(middle - QPointF(half, 0));
    path.closeSubpath();
    return path;
}

// Points at the band from above.
QPainterPath pointer(const QPointF &tip)
{
    QPainterPath path(tip);
    path.lineTo(tip + QPointF(-doubtHalf, -doubtHeight));
    path.lineTo(tip + QPointF(doubtHalf, -doubtHeight));
    path.closeSubpath();
    return path;
}

QPainterPath handle(double x, double bottom)
{
    const double shoulder = bottom - handleHalf;
    QPainterPath path(QPointF(x - handleHalf, bottom - handleHeight));
    path.lineTo(x + handleHalf, bottom - handleHeight);
    path.lineTo(x + handleHalf, shoulder);
    path.lineTo(x, bottom);
    path.lineTo(x - handleHalf, shoulder);
    path.closeSubpath();
    return path;
}

} // namespace

CanvasRows::CanvasRows(const QSize &size)
    : ruler(0, 0, size.width(), rulerHeight)
    , nodes(0, rulerHeight, size.width(), nodesHeight)
{
    const double top = nodes.bottom() + gap;
    const double bandTop = std::max(top, size.height() - gap - bandHeight);
    strip = QRectF(0, top, size.width(), std::max(0.0, bandTop - gap - top));
    band = QRectF(0, bandTop, size.width(), bandHeight);
}

CanvasColors CanvasColors::ofSkin()
{
    const ZkSkinManager *skin = ZkSkinManager::instance();
    return {skin->color(ZKSKIN::Canvas),
            skin->color(ZKSKIN::PanelBackground),
            skin->color(ZKSKIN::DisabledText),
            skin->color(ZKSKIN::DimText),
            skin->color(ZKSKIN::TimelinePlayhead),
            skin->color(ZKSKIN::TimelineNode),
            skin->color(ZKSKIN::RaisedHover),
            skin->color(ZKSKIN::TimelineTracked),
            skin->color(ZKSKIN::RemoveStroke),
            skin->color(ZKSKIN::Accent)};
}

TimelinePainter::TimelinePainter(QPainter *painter,
                                 const ZkStudioTimelinePresenter &presenter,
                                 const QSize &size,
                                 const CanvasColors &colors,
                                 const CanvasLook &look)
    : m_painter(painter)
    , m_presenter(presenter)
    , m_area(QPointF(), size)
    , m_rows(size)
    , m_colors(colors)
    , m_look(look)
{ }

void TimelinePainter::paint(const QRectF &exposed, const Filmstrip &filmstrip)
{
    m_exposed = exposed;
    m_painter->fillRect(exposed, m_colors.background);
    if (m_presenter.scale().frameCount() > 0) {
        paintRuler();
        paintStrip(filmstrip);
        paintBand();
        paintNodes();
        paintDoubt();
        paintPlayhead();
    }
    if (m_look.hasFocus)
        paintFocus();
}

void TimelinePainter::paintRuler()
{
    m_painter->fillRect(m_rows.ruler, m_colors.ruler);
    m_painter->setFont(m_look.font);
    const TimelineScale &scale = m_presenter.scale();
    const double rate = m_presenter.frameRate();
    m_labelWidth =
        QFontMetricsF(m_look.font).horizontalAdvance(timeCode(scale.frameCount() - 1, rate));
    const RulerSteps steps = rulerSteps(rate, scale.pixelsPerFrame(), m_labelWidth);
    // A time code begins above its mark and reaches over the marks behind it.
    const qint64 first = scale.frameAt(m_exposed.left() - m_labelWidth);
    const qint64 last = scale.frameAt(m_exposed.right() + 1);
    for (qint64 frame = first / steps.minor * steps.minor; frame <= last; frame += steps.minor)
        paintTick(frame, frame % steps.major == 0);
}

void TimelinePainter::paintTick(qint64 frame, bool isMajor)
{
    const TimelineScale &scale = m_presenter.scale();
    const double x = std::floor(scale.centreOf(frame));
    const double length = isMajor ? majorTick : minorTick;
    m_painter->fillRect(QRectF(x, m_rows.ruler.bottom() - length, 1, length), m_colors.tick);
    const QRectF label(x - labelInset, m_rows.ruler.top(), m_labelWidth + 1, labelsBottom);
    // One that no scrolling can bring into sight would only be cut off.
    const bool isCut = label.right() > scale.width() && scale.offset() >= scale.maximumOffset();
    if (!isMajor || isCut)
        return;
    m_painter->setPen(m_colors.text);
    m_painter->drawText(label,
                        Qt::AlignLeft | Qt::AlignBottom | Qt::TextDontClip,
                        timeCode(frame, m_presenter.frameRate()));
}

void TimelinePainter::paintStrip(const Filmstrip &filmstrip)
{
    const TimelineScale &scale = m_presenter.scale();
    const double left = scale.leftOf(0);
    const QRectF clip(
        left, m_rows.strip.top(), scale.leftOf(scale.frameCount()) - left, m_rows.strip.height());
    const ZkPainterCaretaker state(m_painter);
    QPainterPath outline;
    outline.addRoundedRect(clip, stripRadius, stripRadius);
    m_painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    m_painter->fillPath(outline, m_colors.strip);
    m_painter->setClipPath(outline, Qt::IntersectClip);
    filmstrip.paint(m_painter, m_rows.strip, scale, m_exposed.left(), m_exposed.right());
}

// A frame, or as many as share a pixel.
void TimelinePainter::paintBand()
{
    const TimelineScale &scale = m_presenter.scale();
    const SegmentMarks &marks = m_presenter.marks();
    // Reaches half a pixel of the screen into the next part, which is painted over it: rounding would
    // leave gaps otherwise.
    const double overlap = 0.5 / m_painter->device()->devicePixelRatioF();
    const auto part = [&](qint64 first, qint64 end) {
        const double left = scale.leftOf(first);
        const double width = scale.leftOf(end) - left + overlap;
        return QRectF(left, m_rows.band.top(), width, m_rows.band.height());
    };
    m_painter->fillRect(part(0, scale.frameCount()), m_colors.strip);
    if (!marks.isTracked())
        return;
    const auto frames = qint64(std::ceil(1 / scale.pixelsPerFrame()));
    const qint64 last = scale.frameAt(m_exposed.right());
    for (qint64 frame = scale.frameAt(m_exposed.left()) / frames * frames; frame <= last;
         frame += frames) {
        const qint64 end = std::min(frame + frames, scale.frameCount());
        const double confidence = marks.highestConfidence(frame, end - 1);
        if (confidence >= 0)
            m_painter->fillRect(part(frame, end),
                                mixed(m_colors.background,
                                      m_colors.tracked,
                                      dimmest + (1 - dimmest) * std::min(1.0, confidence)));
    }
}

// The chosen ones last: where nodes crowd, they must be seen.
void TimelinePainter::paintNodes()
{
    const ZkPainterCaretaker state(m_painter);
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->setOpacity(m_presenter.isTracking() ? 0.45 : 1);
    const TimelineScale &scale = m_presenter.scale();
    const QVector<qint64> &nodes = m_presenter.marks().nodes();
    const auto first =
        std::lower_bound(nodes.cbegin(), nodes.cend(), scale.frameAt(m_exposed.left() - nodeReach));
    const auto end =
        std::upper_bound(first, nodes.cend(), scale.frameAt(m_exposed.right() + nodeReach));
    for (const bool isSelected : {false, true}) {
        for (auto node = first; node != end; ++node) {
            if (m_presenter.selection().contains(*node) == isSelected)
                paintNode(*node);
        }
    }
}

void TimelinePainter::paintNode(qint64 frame)
{
    const bool isSelected = m_presenter.selection().contains(frame);
    const bool isHovered = m_look.hoveredNode == frame;
    const QPointF middle(m_presenter.scale().centreOf(frame), m_rows.nodes.center().y());
    const QPainterPath shape = diamond(middle, nodeHalf);
    if (isSelected || isHovered) {
        m_painter->fillRect(QRectF(middle.x() - 0.5,
                                   m_rows.nodes.bottom() - 2,
                                   1,
                                   m_rows.strip.bottom() - m_rows.nodes.bottom() + 2),
                            withAlpha(m_colors.node, 150));
    }
    m_painter->fillPath(shape, isSelected ? m_colors.node : m_colors.background);
    m_painter->strokePath(shape, QPen(m_colors.node, isHovered ? 2.2 : 1.4));
    if (isSelected)
        m_painter->strokePath(diamond(middle, nodeHalf + 2), QPen(m_colors.playhead, 1.2));
}

// Where the filmstrip is, whatever its pictures: hence the dark rim. Shape and sign tell it from the nodes
// without colours.
void TimelinePainter::paintDoubt()
{
    const qint64 frame = m_presenter.frameToCorrect();
    if (frame < 0)
        return;
    const QPointF tip(m_presenter.scale().centreOf(frame), m_rows.band.top());
    const ZkPainterCaretaker state(m_painter);
    m_painter->setRenderHint(QPainter::Antialiasing);
    const QPainterPath shape = pointer(tip);
    QPen rim(m_colors.background, m_look.isDoubtHovered ? 5 : 3);
    rim.setJoinStyle(Qt::RoundJoin);
    m_painter->strokePath(shape, rim);
    QPen edge(m_look.isDoubtHovered ? m_colors.playhead : m_colors.doubt, 1.5);
    edge.setJoinStyle(Qt::RoundJoin);
    m_painter->strokePath(shape, edge);
    m_painter->fillPath(shape, m_colors.doubt);
    m_painter->fillRect(QRectF(tip.x() - 0.75, tip.y() - doubtHeight + 1.5, 1.5, 4.5),
                        m_colors.background);
    m_painter->fillRect(QRectF(tip.x() - 0.75, tip.y() - doubtHeight + 7, 1.5, 1.5),
                        m_colors.background);
}

void TimelinePainter::paintPlayhead()
{
    const TimelineScale &scale = m_presenter.scale();
    const qint64 frame = m_presenter.position();
    const double x = std::floor(scale.centreOf(frame)) + 0.5;
    if (scale.pixelsPerFrame() >= wideCell) {
        const QRectF cell(
            scale.leftOf(frame), m_rows.strip.top(), scale.pixelsPerFrame(), m_rows.strip.height());
        m_painter->fillRect(cell, withAlpha(m_colors.playhead, 40));
    }
    const double top = m_rows.ruler.bottom() - 1;
    m_painter->fillRect(QRectF(x - 0.5, top, 1, m_area.bottom() - top), m_colors.playhead);
    const ZkPainterCaretaker state(m_painter);
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->fillPath(handle(x, m_rows.ruler.bottom()), m_colors.playhead);
}

void TimelinePainter::paintFocus()
{
    m_painter->setPen(QPen(m_colors.focus, 1));
    m_painter->setBrush(Qt::NoBrush);
    m_painter->drawRect(m_area.adjusted(0.5, 0.5, -0.5, -0.5));
}

QRectF TimelinePainter::doubtArea(const ZkStudioTimelinePresenter &presenter, const QSize &size)
{
    const qint64 frame = presenter.frameToCorrect();
    if (frame < 0)
        return {};
    const CanvasRows rows(size);
    const double top = rows.band.top() - doubtHeight - 2;
    return QRectF(presenter.scale().centreOf(frame) - nodeReach,
                  top,
                  2 * nodeReach,
                  rows.band.bottom() - top);
}

QRectF TimelinePainter::playheadArea(const ZkStudioTimelinePresenter &presenter,
                                     qint64 frame,
                                     const QSize &size)
{
    const TimelineScale &scale = presenter.scale();
    const double half = std::max(handleHalf, scale.pixelsPerFrame() / 2) + 2;
    return QRectF(scale.centreOf(frame) - half, 0, 2 * half, size.height());
}

} // namespace zk::timeline
