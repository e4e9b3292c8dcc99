#include "ZkDoubt.h"

#include <algorithm>
#include <iterator>

namespace zk::datamodel {

namespace {

using Trust = TrackingTrust;
using Place = QVector<Trust>::const_iterator;

// Confidences. A stretch of doubt is below the first; it is worth mentioning from the second on.
constexpr double sure = 0.7;
constexpr double doubtful = 0.5;
// Frames: shorter recoveries do not end a stretch.
constexpr qint64 recovery = 5;
// Frames: what is nearer to a node hardly differs from it.
constexpr qint64 nodeDistance = 2;

struct Stretch
{
    Place first;
    Place end;
    double weight = 0; // how much is in doubt, over all frames
    float lowest = 1;
};

bool isUnsure(const Trust &trust)
{
    return trust.confidence < sure;
}

// One bad frame counts as much as many that are a little doubtful.
double weightOf(const Trust &trust)
{
    const double lack = std::max(0.0, sure - double(trust.confidence));
    return lack * lack;
}

bool isNearNode(const Segments &segments, qint64 frame)
{
    const auto node = segments.nodes().lowerBound(frame - nodeDistance + 1);
    return node != segments.nodes().constEnd() && node.key() < frame + nodeDistance;
}

// From a frame in doubt to where certainty, a node, an untracked frame or another way begins.
Stretch stretchFrom(Place first, Place end)
{
    Stretch stretch {first, first, 0, 1};
    for (Place place = first; place != end; ++place) {
        const bool goesOn = place == first
            || (place->frame == std::prev(place)->frame + 1 && place->way == first->way);
        if (!goesOn || place - stretch.end >= recovery)
            break;
        if (!isUnsure(*place))
            continue;
        stretch.end = std::next(place);
        stretch.weight += weightOf(*place);
        stretch.lowest = std::min(stretch.lowest, place->confidence);
    }
    return stretch;
}

bool isChecked(const Stretch &stretch, const QMap<qint64, float> &checked)
{
    return std::any_of(stretch.first, stretch.end, [&](const Trust &trust) {
        const auto it = checked.constFind(trust.frame);
        return it != checked.constEnd() && *it == trust.confidence;
    });
}

qint64 frameOf(const Segments &segments, const Stretch &stretch)
{
    const double fallen = stretch.first->way == Trust::Way::Both
        ? double(stretch.lowest)
        : (sure + double(stretch.lowest)) / 2;
    const auto isIt = [&](const Trust &trust) {
        return double(trust.confidence) <= fallen && !isNearNode(segments, trust.frame);
    };
    if (stretch.first->way != Trust::Way::Backward) {
        const Place place = std::find_if(stretch.first, stretch.end, isIt);
        return place == stretch.end ? -1 : place->frame;
    }
    const auto last = std::make_reverse_iterator(stretch.first);
    const auto place = std::find_if(std::make_reverse_iterator(stretch.end), last, isIt);
    return place == last ? -1 : place->frame;
}

} // namespace

qint64 frameToCorrect(const Segments &segments, const QMap<qint64, float> &checked)
{
    const QVector<Trust> trust = segments.trackingTrust();
    qint64 result = -1;
    double most = 0;
    for (Place place = trust.cbegin(); place != trust.cend();) {
        place = std::find_if(place, trust.cend(), isUnsure);
        if (place == trust.cend())
            break;
        const Stretch stretch = stretchFrom(place, trust.cend());
        place = stretch.end;
        const bool isWorse =
            stretch.lowest < doubtful && stretch.weight > most && !isChecked(stretch, checked);
        const qint64 frame = isWorse ? frameOf(segments, stretch) : -1;
        if (frame >= 0) {
            result = frame;
            most = stretch.weight;
        }
    }
    return result;
}

} // namespace zk::datamodel
