#include "ZkObjectTracker.h"

#include "ZkFrameData.h"
#include "ZkMaskTools.h"
#include "ZkMatte.h"
#include "ZkTrackerOptions.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zk::engine {

namespace {

using FramePointer = std::shared_ptr<const FrameData>;

std::shared_ptr<FrameData> frameData(const cv::Mat &frame, const TrackerOptions &options)
{
    auto data = std::make_shared<FrameData>();
    data->frame = frame;
    data->motionImage = motionImage(frame, options.motion);
    data->features = computeFeatures(frame, options.features);
    data->descriptors = describe(data->features);
    return data;
}

cv::Mat coarseMatte(const cv::Mat &matte, const cv::Size &size)
{
    cv::Mat coarse;
    cv::resize(matte, coarse, size, 0, 0, cv::INTER_AREA);
    return coarse;
}

// What the tracker thinks of one frame, at working size.
struct Estimate
{
    cv::Mat matte; // CV_8UC1, 0 or 255
    cv::Mat doubtful; // CV_8UC1, non-zero where the matte may be wrong
    double confidence = 0.0;
};

} // namespace

struct ObjectTracker::Private
{
    explicit Private(const TrackerOptions &o)
        : options(o)
        , appearance(o.appearance)
    { }

    void forget();
    void stand(const FramePointer &at, const cv::Mat &matte);
    void learnTruth(const FramePointer &at, const cv::Mat &fullMatte);
    Estimate follow(const FrameData &next, const MotionField &motion) const;
    Estimate found(const FrameData &next, const MotionField &motion) const;
    cv::Mat believedParts(const cv::Mat &object, const Evidence &evidence) const;
    Estimate search(const FrameData &next) const;
    Estimate decided(const FrameData &next, const cv::Rect &area, const cv::Mat &logits) const;
    double confidenceOf(const cv::Mat &matte, const cv::Mat &logits) const;
    void adapt(const FrameData &next, const Estimate &estimate);
    bool isVisible() const { return area > 0; }

    const TrackerOptions options; // read by prepare() on other threads; everything below is not
    AppearanceModel appearance;
    FramePointer current;
    cv::Mat matte; // CV_8UC1, 0 or 255, working size
    int area = 0; // of the matte
    double usualArea = 0.0; // of the object when it is seen whole
    cv::Rect lastSeen; // box in which it was seen last
    int lostFrames = 0;
    int sinceAdapted = 0;
};

void ObjectTracker::Private::forget()
{
    appearance = AppearanceModel(options.appearance);
    usualArea = 0.0;
    lostFrames = 0;
}

void ObjectTracker::Private::stand(const FramePointer &at, const cv::Mat &newMatte)
{
    current = at;
    matte = newMatte;
    area = cv::countNonZero(matte);
    if (area > 0) {
        lastSeen = cv::boundingRect(matte);
        lostFrames = 0;
    } else {
        ++lostFrames;
    }
}

void ObjectTracker::Private::learnTruth(const FramePointer &at, const cv::Mat &fullMatte)
{
    const cv::Mat coarse = coarseMatte(fullMatte, at->features.size());
    cv::Mat object = hardMatte(coarse);
    if (cv::countNonZero(object) == 0)
        object = coarse > 0; // smaller than a working pixel
    if (objectArea(fullMatte) == 0)
        object.setTo(0);
    stand(at, object);
    if (area > 0)
        usualArea = area;
    appearance.learnTruth(at->features, object);
    sinceAdapted = 0;
}

double ObjectTracker::Private::confidenceOf(const cv::Mat &object, const cv::Mat &logits) const
{
    const int objectSize = cv::countNonZero(object);
    if (objectSize == 0)
        return 0.0;
    const double meanLogit = cv::mean(logits, object)[0];
    return std::clamp(std::tanh(meanLogit / 3.0), 0.0, 1.0) * completeness(objectSize, usualArea);
}

Estimate ObjectTracker::Private::decided(const FrameData &next,
                                         const cv::Rect &box,
                                         const cv::Mat &logits) const
{
    Estimate estimate;
    estimate.matte = cv::Mat::zeros(next.features.size(), CV_8U);
    estimate.doubtful = cv::Mat::zeros(next.features.size(), CV_8U);
    cutGraph(logits, next.features.lab(box), options.cut).copyTo(estimate.matte(box));
    cv::Mat(cv::abs(logits) < 1.5f).copyTo(estimate.doubtful(box));
    return estimate;
}

// What goes on from where the object was, and the parts of it that come back from behind something at a
// distance from the rest: they look like the object, and about as much of it is missing.
cv::Mat ObjectTracker::Private::believedParts(const cv::Mat &object, const Evidence &evidence) const
{
    cv::Mat result = connectedTo(object, evidence.warp > 0.0f);
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(object & ~result, labels, stats, centres);
    double missing = options.largestArea * usualArea - cv::countNonZero(result);
    for (int i = 1; i < count; ++i) {
        const int size = stats.at<int>(i, cv::CC_STAT_AREA);
        if (size < options.returnedShare * usualArea || size > missing)
            continue;
        const cv::Mat part = labels == i;
        if (cv::mean(evidence.network, part)[0] < options.returnedLogit)
            continue;
        result |= part;
        missing -= size;
    }
    return result;
}

Estimate ObjectTracker::Private::follow(const FrameData &next, const MotionField &motion) const
{
    const Evidence evidence =
        gatherEvidence(*current, asShare(matte), next, motion, appearance, options.evidence);
    if (evidence.area.empty())
        return {cv::Mat::zeros(matte.size(), CV_8U), cv::Mat::zeros(matte.size(), CV_8U), 0.0};
    const cv::Mat logits = weighedUp(evidence, options.evidence);
    Estimate estimate = decided(next, evidence.area, logits);
    cv::Mat object = estimate.matte(evidence.area);
    believedParts(object, evidence).copyTo(object);
    estimate.confidence = confidenceOf(object, logits);
    return estimate;
}

// Nothing is known but the looks and roughly the place.
Estimate ObjectTracker::Private::search(const FrameData &next) const
{
    const double growth = options.searchGrowth * (lostFrames + 2);
    const cv::Size margin(cvRound(lastSeen.width * growth) + 4,
                          cvRound(lastSeen.height * growth) + 4);
    const cv::Rect box = grownBox(lastSeen, margin, next.features.size());
    cv::Mat logits = appearance.networkLogits(next.features, box);
    cv::boxFilter(logits, logits, -1, {5, 5});
    Estimate estimate = decided(next, box, logits - options.foundLogit);
    cv::Mat object = estimate.matte(box);
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(object, labels, stats, centres);
    int largest = 0;
    for (int i = 1; i < count; ++i) {
        if (largest == 0
            || stats.at<int>(i, cv::CC_STAT_AREA) > stats.at<int>(largest, cv::CC_STAT_AREA))
            largest = i;
    }
    const bool believed =
        largest > 0 && stats.at<int>(largest, cv::CC_STAT_AREA) >= options.foundShare * usualArea;
    object.setTo(
        0, believed ? cv::Mat(labels != largest) : cv::Mat(object.size(), CV_8U, cv::Scalar(255)));
    estimate.confidence = confidenceOf(object, logits);
    return estimate;
}

Estimate ObjectTracker::Private::found(const FrameData &next, const MotionField &motion) const
{
    Estimate estimate;
    if (isVisible())
        estimate = follow(next, motion);
    if (!estimate.matte.empty()
        && cv::countNonZero(estimate.matte) >= options.lostShare * usualArea)
        return estimate;
    Estimate other = search(next);
    const bool larger =
        estimate.matte.empty() || cv::countNonZero(other.matte) > cv::countNonZero(estimate.matte);
    return larger ? other : estimate;
}

void ObjectTracker::Private::adapt(const FrameData &next, const Estimate &estimate)
{
    if (++sinceAdapted < options.adaptEvery || estimate.confidence < 0.3)
        return;
    sinceAdapted = 0;
    appearance.adapt(next.features, estimate.matte, estimate.doubtful);
}

ObjectTracker::ObjectTracker()
    : ObjectTracker(TrackerOptions())
{ }

ObjectTracker::ObjectTracker(const TrackerOptions &options)
    : d(std::make_unique<Private>(options))
{ }

ObjectTracker::~ObjectTracker() = default;
ObjectTracker::ObjectTracker(ObjectTracker &&) noexcept = default;
ObjectTracker &ObjectTracker::operator=(ObjectTracker &&) noexcept = default;

bool ObjectTracker::isStarted() const
{
    return d->current != nullptr;
}

PreparedFrame ObjectTracker::current() const
{
    return PreparedFrame(d->current);
}

PreparedFrame ObjectTracker::prepareFirst(const cv::Mat &frame) const
{
    if (!isFrame(frame))
        return {};
    return PreparedFrame(frameData(frame, d->options));
}

PreparedFrame ObjectTracker::prepare(const PreparedFrame &previous, const cv::Mat &frame) const
{
    if (previous.isEmpty() || !isFrame(frame) || frame.size() != previous.size())
        return {};
    const auto data = frameData(frame, d->options);
    data->transition = measuredTransition(*previous.data(), *data, d->options);
    data->previous = previous.data();
    return PreparedFrame(data);
}

bool ObjectTracker::start(const cv::Mat &frame, const cv::Mat &matte)
{
    return start(prepareFirst(frame), matte);
}

bool ObjectTracker::start(const PreparedFrame &first, const cv::Mat &matte)
{
    if (first.isEmpty() || !isMatteOf(matte, first.size()) || objectArea(matte) == 0)
        return false;
    d->forget();
    d->learnTruth(first.data(), matte);
    return true;
}

TrackedFrame ObjectTracker::advance(const PreparedFrame &next)
{
    if (!isStarted() || next.isEmpty() || next.size() != current().size())
        return {};
    const FramePointer data = next.data();
    const Transition transition = transitionBetween(d->current, *data, d->options);
    if (transition.cut)
        return {cv::Mat::zeros(next.size(), CV_8U), 0.0, true};
    const Estimate estimate = d->found(*data, transition.motion);
    d->stand(data, estimate.matte);
    d->adapt(*data, estimate);
    return {
        refineMatte(data->frame, estimate.matte, d->options.refiner), estimate.confidence, false};
}

bool ObjectTracker::correct(const PreparedFrame &at, const cv::Mat &matte)
{
    if (!isStarted() || at.size() != current().size() || !isMatteOf(matte, at.size()))
        return false;
    d->learnTruth(at.data(), matte);
    return true;
}

} // namespace zk::engine
