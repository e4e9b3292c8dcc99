// The part of the service that has to do with areas and with the frame that the player shows.
#include "ZkStudioSmartKeyingService.h"

#include "../timeline/ZkStudioTimeline.h"
#include "ZkNodeAreas.h"

#include <QtMath>

#include <algorithm>

using namespace zk::datamodel;

namespace {

QRectF insideFrame(const QRectF &rect)
{
    return rect.normalized() & QRectF(0, 0, 1, 1);
}

// The pixels that the rectangle touches. Borders that are pixel borders but for rounding are taken as such.
QRect pixelsOf(const QRectF &rect, const QSize &size)
{
    constexpr double rounding = 1e-6;
    const QPoint first(qFloor(rect.left() * size.width() + rounding),
                       qFloor(rect.top() * size.height() + rounding));
    const QPoint end(qCeil(rect.right() * size.width() - rounding),
                     qCeil(rect.bottom() * size.height() - rounding));
    const QSize atLeast = QSize(end.x() - first.x(), end.y() - first.y()).expandedTo({1, 1});
    return QRect(first, atLeast) & QRect(QPoint(), size);
}

EncodedMatte filled(const QRect &box, const QSize &size)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    for (int y = box.top(); y <= box.bottom(); ++y)
        std::fill_n(image.scanLine(y) + box.left(), box.width(), uchar(255));
    return EncodedMatte(image);
}

} // namespace

qint64 ZkStudioSmartKeyingService::shownFrame() const
{
    return timeline()->playhead()->position();
}

Areas ZkStudioSmartKeyingService::areasOf(qint64 frame) const
{
    const SegmentNodePtr node = m_segments.node(frame);
    return node ? node->areas : Areas();
}

const AreaIndex &ZkStudioSmartKeyingService::shownAreas() const
{
    m_shownAreas.setAreas(areasOf(shownFrame()));
    return m_shownAreas;
}

void ZkStudioSmartKeyingService::setEnabled(bool enabled)
{
    m_isEnabled = enabled;
    if (!enabled || m_playheadWatch)
        return;
    watchShownFrame();
    if (!m_segments.isEmpty())
        QMetaObject::invokeMethod(
            &m_receiver, [this] { reportChange(); }, Qt::QueuedConnection);
}

void ZkStudioSmartKeyingService::watchShownFrame()
{
    shownAreas();
    m_playheadWatch = std::make_unique<PlayheadWatch>(timeline()->playhead(),
                                                      [this](qint64) { onShownFrameChanged(); });
}

void ZkStudioSmartKeyingService::onShownFrameChanged()
{
    const Areas before = m_shownAreas.areas();
    if (differenceOf(before, shownAreas().areas()).isEmpty() || m_isFrameDue)
        return;
    m_isFrameDue = true;
    QMetaObject::invokeMethod(
        &m_receiver, [this] { reportShownFrame(); }, Qt::QueuedConnection);
}

void ZkStudioSmartKeyingService::reportShownFrame()
{
    m_isFrameDue = false;
    AreaDifference asUpdate;
    asUpdate.hasUpdated = true;
    reportAreas(asUpdate);
}

// "No mask" without the object finder's help is no answer: then the area itself is the object.
EncodedMatte ZkStudioSmartKeyingService::objectIn(const QRectF &rect) const
{
    const QRect box = pixelsOf(rect, m_clip->frameSize());
    const EncodedMatte object = m_objectFinder ? m_objectFinder(shownFrame(), box) : EncodedMatte();
    return object.isEmpty() ? filled(box, m_clip->frameSize()) : object;
}

AreaPtr ZkStudioSmartKeyingService::shownArea(qint64 id) const
{
    return findArea(shownAreas().areas(), id);
}

void ZkStudioSmartKeyingService::changeShownNode(const SegmentNodePtr &node, const QString &text)
{
    changeNode(shownFrame(), node, text);
}

// With one object only, a node takes the place of what was tracked.
EncodedMatte ZkStudioSmartKeyingService::underAreas(qint64 frame) const
{
    return m_segments.isSingleObject() ? EncodedMatte(m_segments.matteAt(frame)) : EncodedMatte();
}

// An area is found by its centre, so that no two of a frame may have the same one: a second box around it
// moves aside, by far less than a pixel, but by more than comparing rectangles overlooks.
QRectF ZkStudioSmartKeyingService::apartFromOthers(const QRectF &rect, qint64 id) const
{
    constexpr double step = 1e-11; // of the frame's width
    const auto isTaken = [=](const QPointF &centre) {
        const AreaPtr other = shownArea(findAreaIdAt(centre.x(), centre.y()));
        return other && other->id != id && other->rect.center() == centre;
    };
    QRectF place = rect;
    while (isTaken(place.center()))
        place = insideFrame(place.translated(step, 0));
    return place;
}

int ZkStudioSmartKeyingService::addArea(const QRectF &rect)
{
    const QRectF inside = apartFromOthers(insideFrame(rect), -1);
    if (m_isLocked || inside.isEmpty())
        return -1;
    const qint64 frame = shownFrame();
    const AreaPtr area = QSharedPointer<Area>::create(
        Area {qint64(Segments::nextRevision()), inside, objectIn(inside)});
    const int index = areaCount();
    changeShownNode(
        nodeWithArea(m_segments.node(frame), underAreas(frame), area, m_clip->frameSize()),
        tr("Add area"));
    return index;
}

bool ZkStudioSmartKeyingService::removeArea(qint64 id)
{
    if (m_isLocked || !shownArea(id))
        return false;
    changeShownNode(nodeWithoutArea(m_segments.node(shownFrame()), id, m_clip->frameSize()),
                    tr("Remove area"));
    return true;
}

bool ZkStudioSmartKeyingService::updateArea(qint64 id, const QRectF &rect)
{
    const QRectF inside = apartFromOthers(insideFrame(rect), id);
    const AreaPtr before = shownArea(id);
    if (m_isLocked || !before || inside.isEmpty())
        return false;
    if (before->rect == inside)
        return true;
    const AreaPtr area = QSharedPointer<Area>::create(Area {id, inside, objectIn(inside)});
    changeShownNode(nodeWithArea(m_segments.node(shownFrame()), {}, area, m_clip->frameSize()),
                    tr("Change area"));
    return true;
}

int ZkStudioSmartKeyingService::areaCount() const
{
    return shownAreas().areas().size();
}

QRectF ZkStudioSmartKeyingService::areaRectAt(int index) const
{
    const AreaPtr area = shownAreas().areas().value(index);
    return area ? area->rect : QRectF();
}

qint64 ZkStudioSmartKeyingService::findAreaIdAt(double x, double y) const
{
    return shownAreas().find({x, y});
}

void ZkStudioSmartKeyingService::setRenderAllAreaMasks(bool masks, bool outlines)
{
    if (m_showsAreaMasks == masks && m_showsAreaOutlines == outlines)
        return;
    m_showsAreaMasks = masks;
    m_showsAreaOutlines = outlines;
    reportChange();
}
