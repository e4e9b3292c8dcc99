#include "ZkInteractiveSegmenter.h"

#include "ZkInteractiveSegmenterOptions.h"
#include "ZkMaskTools.h"
#include "ZkMatte.h"
#include "ZkMotion.h"
#include "ZkOwnMotion.h"
#include "ZkScribbleRules.h"
#include "ZkStrokeSolver.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

// A coarse pixel is painted when any part of it is: thin strokes must not get lost.
cv::Mat shrunkStroke(const cv::Mat &stroke, const cv::Size &size)
{
    if (stroke.empty())
        return cv::Mat::zeros(size, CV_8U);
    cv::Mat small;
    const cv::Mat painted = stroke != 0;
    cv::resize(painted, small, size, 0, 0, cv::INTER_AREA);
    return small != 0;
}

cv::Mat shrunkMatte(const cv::Mat &matte, const cv::Size &size)
{
    cv::Mat small;
    cv::resize(matte, small, size, 0, 0, cv::INTER_AREA);
    return small;
}

// The box as that share of a picture of another size.
cv::Rect scaledBox(const cv::Rect &box, const cv::Size &from, const cv::Size &to)
{
    const double x = double(to.width) / from.width;
    const double y = double(to.height) / from.height;
    const cv::Point first(cvFloor(box.x * x), cvFloor(box.y * y));
    const cv::Point end(cvCeil(box.br().x * x), cvCeil(box.br().y * y));
    return cv::Rect(first, end) & cv::Rect({0, 0}, to);
}

cv::Mat part(const cv::Mat &mask, const cv::Rect &box)
{
    return mask.empty() ? mask : mask(box);
}

// Whether the pixels are the same: the caller's buffer may hold another frame by now. That takes a small
// part of the time of what depends on them.
bool isSame(const cv::Mat &one, const cv::Mat &other)
{
    return one.size() == other.size() && one.type() == other.type()
        && (one.empty() || cv::norm(one, other, cv::NORM_INF) == 0.0);
}

} // namespace

struct InteractiveSegmenter::Private
{
    explicit Private(const InteractiveSegmenterOptions &o)
        : options(o)
    { }

    void look(const cv::Mat &frame, const std::vector<cv::Mat> &neighbours);
    const FrameFeatures &featuresOf(const cv::Mat &frame, const cv::Rect &box);
    cv::Rect surroundings(const cv::Mat &matte, const Scribbles &scribbles) const;
    cv::Mat solveIn(const cv::Mat &frame,
                    const cv::Rect &box,
                    const Scribbles &scribbles,
                    const cv::Mat &previous);

    // What was computed last, and what of.
    struct Cache
    {
        cv::Mat frame;
        std::vector<cv::Mat> neighbours; // as motion images
        std::vector<cv::Mat> motions; // own motion to each of them
        cv::Rect box; // that the features are of
        FrameFeatures features;
    };

    InteractiveSegmenterOptions options;
    Cache cache;
};

void InteractiveSegmenter::Private::look(const cv::Mat &frame,
                                         const std::vector<cv::Mat> &neighbours)
{
    std::vector<cv::Mat> others;
    for (const cv::Mat &neighbour : neighbours) {
        if (neighbour.size() == frame.size() && neighbour.type() == frame.type())
            others.push_back(motionImage(neighbour));
    }
    const bool isKnown = isSame(frame, cache.frame) && others.size() == cache.neighbours.size()
        && std::equal(others.begin(), others.end(), cache.neighbours.begin(), isSame);
    if (isKnown)
        return;
    cache = {frame.clone(), others, std::vector<cv::Mat>(others.size()), {}, {}};
    const cv::Mat here = motionImage(frame);
    const int count = int(others.size());
    cv::parallel_for_(cv::Range(0, count), [&](const cv::Range &range) {
        for (int i = range.start; i < range.end; ++i)
            cache.motions[std::size_t(i)] = ownMotion(here, others[std::size_t(i)]);
    });
}

const FrameFeatures &InteractiveSegmenter::Private::featuresOf(const cv::Mat &frame,
                                                               const cv::Rect &box)
{
    if (box == cache.box)
        return cache.features;
    cache.box = box;
    cache.features = computeFeatures(frame(box), options.features);
    std::vector<cv::Mat> motions;
    for (const cv::Mat &motion : cache.motions)
        motions.push_back(motion(scaledBox(box, frame.size(), motion.size())));
    if (!motions.empty())
        addMotion(&cache.features, motions);
    return cache.features;
}

// The object with as much around it as its background can be told from.
cv::Rect InteractiveSegmenter::Private::surroundings(const cv::Mat &matte,
                                                     const Scribbles &scribbles) const
{
    cv::Mat object = hardMatte(matte);
    if (!scribbles.keep.empty())
        object |= scribbles.keep != 0;
    const cv::Rect box = cv::boundingRect(object);
    const int side = std::max(box.width, box.height);
    const int margin = std::max(options.leastSurroundings, cvRound(side * options.surroundings));
    return box.empty() ? cv::Rect({0, 0}, matte.size())
                       : grownBox(box, {margin, margin}, matte.size());
}

// The matte of a part of the frame, at the part's size.
cv::Mat InteractiveSegmenter::Private::solveIn(const cv::Mat &frame,
                                               const cv::Rect &box,
                                               const Scribbles &scribbles,
                                               const cv::Mat &previous)
{
    const FrameFeatures &features = featuresOf(frame, box);
    StrokeTask task;
    task.remove = shrunkStroke(part(scribbles.remove, box), features.size());
    task.keep = shrunkStroke(part(scribbles.keep, box), features.size()) & ~task.remove;
    if (!previous.empty())
        task.previous = shrunkMatte(previous(box), features.size());
    return refineMatte(frame(box), StrokeSolver(features, options).solve(task), options.refiner);
}

InteractiveSegmenter::InteractiveSegmenter()
    : InteractiveSegmenter(InteractiveSegmenterOptions())
{ }

InteractiveSegmenter::InteractiveSegmenter(const InteractiveSegmenterOptions &options)
    : d(std::make_unique<Private>(options))
{ }

InteractiveSegmenter::~InteractiveSegmenter() = default;
InteractiveSegmenter::InteractiveSegmenter(InteractiveSegmenter &&) noexcept = default;
InteractiveSegmenter &InteractiveSegmenter::operator=(InteractiveSegmenter &&) noexcept = default;

cv::Mat InteractiveSegmenter::segment(const cv::Mat &frame,
                                      const Scribbles &scribbles,
                                      const cv::Mat &previous,
                                      const std::vector<cv::Mat> &neighbours)
{
    if (!isSegmentable(frame, scribbles, previous))
        return {};
    d->look(frame, neighbours);
    const cv::Rect everything({0, 0}, frame.size());
    const cv::Mat first =
        previous.empty() ? d->solveIn(frame, everything, scribbles, {}) : previous;
    // Once more, larger, where it turned out to be.
    const cv::Rect box = d->surroundings(first, scribbles);
    cv::Mat matte = first;
    if (!previous.empty() || box.area() < d->options.largeShare * everything.area()) {
        const cv::Mat found = d->solveIn(frame, box, scribbles, first);
        matte = cv::Mat(frame.size(), CV_8U, cv::Scalar(0));
        found.copyTo(matte(box));
    }
    obeyScribbles(&matte, scribbles);
    return matte;
}

} // namespace zk::engine
