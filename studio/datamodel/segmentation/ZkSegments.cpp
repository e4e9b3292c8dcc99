#include "ZkSegments.h"

#include "ZkMatteCache.h"
#include "ZkMatteUnion.h"
#include "ZkPixels.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace zk::datamodel {

namespace {

std::atomic<quint64> lastRevision {0};

QImage blended(const EncodedMatte &first, const EncodedMatte &second, double weight)
{
    QImage picture = first.decoded();
    const QImage other = second.decoded();
    if (picture.size() != other.size())
        return picture;
    cv::Mat pixels = writablePixelsOf(picture);
    cv::addWeighted(pixels, weight, pixelsOf(other), 1 - weight, 0, pixels);
    return picture;
}

bool isForwardLater(const TrackedMattes &mattes)
{
    return mattes.backward.matte.isNull()
        || (!mattes.forward.matte.isNull() && mattes.forward.serial >= mattes.backward.serial);
}

// The weight of the forward run: errors grow with the distance from the node, and confidence tells how
// much they did. A run that lost the object has no say.
double forwardWeight(qint64 frame, const TrackedMattes &mattes)
{
    const TrackedSide &forward = mattes.forward;
    const TrackedSide &backward = mattes.backward;
    const double forwardSay = std::max(0.0F, forward.confidence) * double(backward.seed - frame);
    const double backwardSay = std::max(0.0F, backward.confidence) * double(frame - forward.seed);
    return forwardSay + backwardSay > 0 ? forwardSay / (forwardSay + backwardSay) : 1;
}

} // namespace

Segments::Segments()
    : m_cache(std::make_shared<MatteCache>())
{ }

void Segments::setNode(qint64 frame, const SegmentNodePtr &node)
{
    if (node)
        m_nodes.insert(frame, node);
    else
        m_nodes.remove(frame);
}

void Segments::setTracked(qint64 frame, bool isForward, const TrackedSide &side)
{
    TrackedMattes &mattes = m_tracked[frame];
    (isForward ? mattes.forward : mattes.backward) = side;
}

void Segments::removeTracked(qint64 first, qint64 last, bool isForward)
{
    for (auto it = m_tracked.lowerBound(first); it != m_tracked.end() && it.key() <= last;) {
        TrackedMattes &mattes = it.value();
        (isForward ? mattes.forward : mattes.backward) = TrackedSide();
        const bool isLeft = !mattes.forward.matte.isNull() || !mattes.backward.matte.isNull();
        it = isLeft ? std::next(it) : m_tracked.erase(it);
    }
}

QImage Segments::matteAt(qint64 frame) const
{
    if (!m_isSingleObject)
        return unitedAt(frame);
    const Shown shown = shownAt(frame);
    if (shown.first.isNull())
        return {};
    return m_cache->find({shown.first, shown.second}, [&] {
        return shown.second.isNull() ? shown.first.decoded()
                                     : blended(shown.first, shown.second, shown.weight);
    });
}

EncodedMatte Segments::storedAt(qint64 frame) const
{
    if (!m_isSingleObject) {
        const QVector<EncodedMatte> parts = unitedParts(frame);
        return parts.size() == 1 && erasedAt(frame).isEmpty() ? parts.first() : EncodedMatte();
    }
    const Shown shown = shownAt(frame);
    return shown.second.isNull() ? shown.first : EncodedMatte();
}

bool Segments::hasMask(qint64 frame) const
{
    return m_nodes.contains(frame) || m_tracked.contains(frame);
}

bool Segments::hasObject(qint64 frame) const
{
    if (!m_isSingleObject)
        return anyPart(frame, &EncodedMatte::hasObject);
    const Shown shown = shownAt(frame);
    return shown.first.hasObject() || shown.second.hasObject();
}

bool Segments::hasAnything(qint64 frame) const
{
    if (!m_isSingleObject)
        return anyPart(frame, &EncodedMatte::hasAnything);
    const Shown shown = shownAt(frame);
    return !shown.first.isEmpty() || !shown.second.isEmpty();
}

float Segments::confidenceAt(qint64 frame) const
{
    return hasMask(frame) ? shownAt(frame).confidence : -1;
}

QVector<TrackingTrust> Segments::trackingTrust() const
{
    QVector<TrackingTrust> trust;
    trust.reserve(m_tracked.size());
    for (auto it = m_tracked.constBegin(); it != m_tracked.constEnd(); ++it) {
        if (m_nodes.contains(it.key()))
            continue;
        const Shown shown = trackedShownAt(it.key(), it.value());
        if (!shown.isStale)
            trust.append({it.key(), shown.confidence, shown.way});
    }
    return trust;
}

qint64 Segments::nearestObject(qint64 frame, int step) const
{
    if (hasObject(frame))
        return frame;
    QVector<qint64> frames = (m_nodes.keys() + m_tracked.keys()).toVector();
    std::sort(frames.begin(), frames.end());
    if (step < 0)
        std::reverse(frames.begin(), frames.end());
    for (qint64 candidate : qAsConst(frames)) {
        if ((candidate - frame) * step > 0 && hasObject(candidate))
            return candidate;
    }
    return -1;
}

qint64 Segments::byteCount() const
{
    qint64 bytes = 0;
    for (const SegmentNodePtr &node : m_nodes) {
        for (const EncodedMatte *matte :
             {&node->keep, &node->remove, &node->erase, &node->given, &node->brush, &node->result})
            bytes += matte->byteCount();
        for (const AreaPtr &area : node->areas)
            bytes += area->object.byteCount();
    }
    for (const TrackedMattes &mattes : m_tracked)
        bytes += mattes.forward.matte.byteCount() + mattes.backward.matte.byteCount();
    for (const auto &selection : m_saved)
        bytes += selection->byteCount();
    return bytes;
}

quint64 Segments::nextRevision()
{
    return ++lastRevision;
}

void Segments::skipRevisions(quint64 upTo)
{
    quint64 last = lastRevision;
    while (last < upTo && !lastRevision.compare_exchange_weak(last, upTo)) { }
}

Segments::Shown Segments::shownOf(const TrackedMattes &mattes, bool isForward)
{
    const TrackedSide &side = isForward ? mattes.forward : mattes.backward;
    const auto way = isForward ? TrackingTrust::Way::Forward : TrackingTrust::Way::Backward;
    return {side.matte, {}, 1, side.confidence, way, false};
}

Segments::Shown Segments::shownAt(qint64 frame) const
{
    const auto node = m_nodes.constFind(frame);
    if (node != m_nodes.constEnd())
        return {node.value()->result, {}, 1, 1, {}, false};
    const auto tracked = m_tracked.constFind(frame);
    return tracked != m_tracked.constEnd() ? trackedShownAt(frame, tracked.value()) : Shown();
}

Segments::Shown Segments::trackedShownAt(qint64 frame, const TrackedMattes &mattes) const
{
    const auto after = m_nodes.upperBound(frame);
    const bool isForwardFresh =
        after != m_nodes.constBegin() && isFresh(std::prev(after).key(), mattes.forward);
    const bool isBackwardFresh =
        after != m_nodes.constEnd() && isFresh(after.key(), mattes.backward);
    if (isForwardFresh && isBackwardFresh) {
        const double weight = forwardWeight(frame, mattes);
        if (weight > 0 && weight < 1)
            return {mattes.forward.matte,
                    mattes.backward.matte,
                    weight,
                    qMax(mattes.forward.confidence, mattes.backward.confidence),
                    TrackingTrust::Way::Both,
                    false};
        return shownOf(mattes, weight > 0);
    }
    if (isForwardFresh != isBackwardFresh)
        return shownOf(mattes, isForwardFresh);
    Shown shown = shownOf(mattes, isForwardLater(mattes));
    shown.isStale = shown.way == TrackingTrust::Way::Forward ? after != m_nodes.constBegin()
                                                             : after != m_nodes.constEnd();
    return shown;
}

QVector<EncodedMatte> Segments::unitedParts(qint64 frame) const
{
    QVector<EncodedMatte> parts;
    const SegmentNodePtr own = node(frame);
    const TrackedMattes tracked = m_tracked.value(frame);
    for (const EncodedMatte &part :
         {own ? own->result : EncodedMatte(), tracked.forward.matte, tracked.backward.matte}) {
        if (!part.isNull())
            parts.append(part);
    }
    return parts;
}

// What the user took away from the objects that are tracked into the frame.
EncodedMatte Segments::erasedAt(qint64 frame) const
{
    const SegmentNodePtr own = node(frame);
    return own && m_tracked.contains(frame) ? own->erase : EncodedMatte();
}

QImage Segments::unitedAt(qint64 frame) const
{
    const QVector<EncodedMatte> parts = unitedParts(frame);
    const EncodedMatte erased = erasedAt(frame);
    if (parts.isEmpty())
        return {};
    return m_cache->find(parts + QVector<EncodedMatte> {erased}, [&] {
        QImage image = unionOf(parts);
        const QImage hidden = erased.decoded();
        if (!hidden.isNull() && hidden.size() == image.size())
            writablePixelsOf(image).setTo(0, pixelsOf(hidden));
        return image;
    });
}

bool Segments::anyPart(qint64 frame, bool (EncodedMatte::*hasIt)() const) const
{
    if (!erasedAt(frame).isEmpty())
        return (EncodedMatte(unitedAt(frame)).*hasIt)();
    const QVector<EncodedMatte> parts = unitedParts(frame);
    return std::any_of(
        parts.begin(), parts.end(), [=](const EncodedMatte &part) { return (part.*hasIt)(); });
}

// Whether the run came from the node of that frame as it is now.
bool Segments::isFresh(qint64 seedFrame, const TrackedSide &side) const
{
    return !side.matte.isNull() && side.seed == seedFrame
        && node(seedFrame)->revision == side.seedRevision;
}

} // namespace zk::datamodel
