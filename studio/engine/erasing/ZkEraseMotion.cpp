#include "ZkEraseMotion.h"

#include "../ZkMaskTools.h"
#include "ZkDiffusion.h"
#include "ZkMotionModel.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

constexpr int smallestSide = 32; // below it the flow's patches and pyramid do not fit
constexpr int around = 64; // working pixels around a hole in which motion is measured
constexpr int corrupted = 8; // so far a hole's filling spoils the flow outside of it
constexpr double contradiction = 2.25; // squared pixels between there and back
constexpr float foreign = 1.0f; // squared pixels off the plane's motion: another object's
constexpr int speck = 400; // pixels
constexpr int mostSamples = 400;

cv::Mat brightness(const Plate &plate, const cv::Rect &box)
{
    cv::Mat gray;
    cv::cvtColor(plate.picture(box), gray, cv::COLOR_BGR2GRAY);
    return gray;
}

cv::Mat flowBetween(const cv::Mat &from, const cv::Mat &to)
{
    if (std::min(from.cols, from.rows) < smallestSide)
        return cv::Mat::zeros(from.size(), CV_32FC2);
    const auto flow = cv::DISOpticalFlow::create(cv::DISOpticalFlow::PRESET_FAST);
    flow->setFinestScale(1);
    cv::Mat field;
    flow->calc(from, to, field);
    return field;
}

// Squared length of there and back; a large number where "back" is not known.
cv::Mat contradictions(const cv::Mat &there, const cv::Mat &back)
{
    cv::Mat result(there.size(), CV_32F);
    for (int y = 0; y < there.rows; ++y) {
        for (int x = 0; x < there.cols; ++x) {
            const cv::Vec2f go = there.at<cv::Vec2f>(y, x);
            const cv::Point end(cvRound(float(x) + go[0]), cvRound(float(y) + go[1]));
            float error = 1e6f;
            if (cv::Rect({0, 0}, back.size()).contains(end)) {
                const cv::Vec2f sum = go + back.at<cv::Vec2f>(end);
                error = sum.dot(sum);
            }
            result.at<float>(y, x) = error;
        }
    }
    return result;
}

// Pixels whose motion leads into the mask.
cv::Mat leadingInto(const cv::Mat &mask, const cv::Mat &flow)
{
    cv::Mat result = cv::Mat::zeros(mask.size(), CV_8U);
    const cv::Rect inside({0, 0}, mask.size());
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            const cv::Vec2f &go = flow.at<cv::Vec2f>(y, x);
            const cv::Point end(cvRound(float(x) + go[0]), cvRound(float(y) + go[1]));
            if (inside.contains(end) && mask.at<uchar>(end))
                result.at<uchar>(y, x) = 255;
        }
    }
    return result;
}

// Completes the motion in one connected unknown area: a plane's motion fitted to the known motion
// around it, and what remains spread smoothly inwards.
class AreaCompletion
{
public:
    // flow: is written to; state: is kept.
    AreaCompletion(const cv::Mat &flow, const cv::Mat &state)
        : m_flow(flow)
        , m_state(state.clone())
    { }

    void run(std::uint64_t seed)
    {
        const std::vector<MotionSample> known = samples();
        const bool planar = m_model.fit(known, {{0, 0}, m_flow.size()}, seed);
        m_useModel = planar && m_model.inliers() > 0.5;
        cv::Mat rest = m_flow.clone();
        if (m_useModel)
            subtractModel(&rest);
        diffuse(&rest, m_state);
        addBack(rest);
    }

private:
    std::vector<MotionSample> samples() const
    {
        std::vector<MotionSample> result;
        const int count = cv::countNonZero(m_state == DiffusionKnown);
        const int step = std::max(1, count / mostSamples);
        int i = 0;
        for (int y = 0; y < m_flow.rows; ++y) {
            for (int x = 0; x < m_flow.cols; ++x) {
                if (m_state.at<uchar>(y, x) == DiffusionKnown && i++ % step == 0)
                    result.push_back({cv::Point2f(float(x), float(y)), m_flow.at<cv::Vec2f>(y, x)});
            }
        }
        return result;
    }
    // What moves with something else does not belong to the background behind the hole.
    void subtractModel(cv::Mat *rest)
    {
        for (int y = 0; y < rest->rows; ++y) {
            for (int x = 0; x < rest->cols; ++x) {
                cv::Vec2f &motion = rest->at<cv::Vec2f>(y, x);
                motion -= m_model.motionAt({float(x), float(y)});
                if (motion.dot(motion) > foreign && m_state.at<uchar>(y, x) == DiffusionKnown)
                    m_state.at<uchar>(y, x) = DiffusionOutside;
            }
        }
    }
    void addBack(const cv::Mat &rest)
    {
        for (int y = 0; y < rest.rows; ++y) {
            for (int x = 0; x < rest.cols; ++x) {
                if (m_state.at<uchar>(y, x) != DiffusionUnknown)
                    continue;
                cv::Vec2f &motion = m_flow.at<cv::Vec2f>(y, x);
                motion = rest.at<cv::Vec2f>(y, x);
                if (m_useModel)
                    motion += m_model.motionAt({float(x), float(y)});
            }
        }
    }

    cv::Mat m_flow;
    cv::Mat m_state;
    MotionModel m_model;
    bool m_useModel = false;
};

// Each unknown area by itself; specks, which have nothing to fit to, all at once.
void completeFlow(cv::Mat *flow, const cv::Mat &unknown, const cv::Mat &error)
{
    cv::Mat state(flow->size(), CV_8U, cv::Scalar(DiffusionKnown));
    state.setTo(DiffusionOutside, error > contradiction);
    state.setTo(DiffusionUnknown, unknown);
    cv::Mat labels, boxes, centers;
    const int count = cv::connectedComponentsWithStats(unknown, labels, boxes, centers);
    for (int i = 1; i < count; ++i) {
        const int *stats = boxes.ptr<int>(i);
        if (stats[cv::CC_STAT_AREA] < speck)
            continue;
        const cv::Rect box(stats[0], stats[1], stats[2], stats[3]);
        const cv::Rect area = grownBox(box, {around / 2, around / 2}, flow->size());
        const cv::Mat others = (state(area) == DiffusionUnknown) & (labels(area) != i);
        cv::Mat own = state(area).clone();
        own.setTo(DiffusionOutside, others);
        AreaCompletion((*flow)(area), own).run(std::uint64_t(i));
        state(area).setTo(DiffusionKnown, own == DiffusionUnknown);
    }
    diffuse(flow, state);
}

// Nothing that is known moved consistently, and what came is not what was there.
bool isSceneCut(const cv::Mat &from,
                const cv::Mat &to,
                const cv::Mat &flow,
                const cv::Mat &known,
                const cv::Mat &error)
{
    if (cv::countNonZero(known) < 64)
        return false;
    const double agreeing = cv::mean((error < 9.0) / 255, known)[0];
    cv::Mat map(flow.size(), CV_32FC2), moved, difference;
    map.forEach<cv::Vec2f>([&](cv::Vec2f &place, const int *at) {
        place = flow.at<cv::Vec2f>(at[0], at[1]) + cv::Vec2f(float(at[1]), float(at[0]));
    });
    cv::remap(to, moved, map, cv::noArray(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::absdiff(from, moved, difference);
    const double left = cv::mean(difference, known)[0];
    return agreeing < 0.35 && left > 18.0;
}

// The two motions between two frames, in the box around their holes.
class PairMotion
{
public:
    PairMotion(const EraseFrame &earlier, const EraseFrame &later, const cv::Rect &box)
        : m_hole(earlier.hole(box))
        , m_holeLater(later.hole(box))
        , m_before(brightness(earlier.work, box))
        , m_after(brightness(later.work, box))
    { }

    bool measure(const std::function<bool()> &stopped)
    {
        forward = flowBetween(m_before, m_after);
        if (stopped())
            return false;
        backward = flowBetween(m_after, m_before);
        m_error = contradictions(forward, backward);
        m_errorLater = contradictions(backward, forward);
        return !stopped();
    }
    // False at a scene cut.
    bool completeAroundHoles(const std::function<bool()> &stopped)
    {
        const cv::Mat spoilt = grownMask(m_hole, corrupted);
        const cv::Mat spoiltLater = grownMask(m_holeLater, corrupted);
        const cv::Mat hidden = spoilt | leadingInto(spoiltLater, forward);
        const cv::Mat hiddenLater = spoiltLater | leadingInto(spoilt, backward);
        if (isSceneCut(m_before, m_after, forward, ~hidden, m_error))
            return false;
        complete(hidden, hiddenLater, stopped);
        return true;
    }
    void completeContradictions(const std::function<bool()> &stopped)
    {
        const cv::Mat hidden = m_hole & (m_error > contradiction);
        complete(hidden, m_holeLater & (m_errorLater > contradiction), stopped);
    }

    cv::Mat forward;
    cv::Mat backward;

private:
    void complete(const cv::Mat &hidden,
                  const cv::Mat &hiddenLater,
                  const std::function<bool()> &stopped)
    {
        completeFlow(&forward, hidden, m_error);
        if (!stopped())
            completeFlow(&backward, hiddenLater, m_errorLater);
    }

    cv::Mat m_hole;
    cv::Mat m_holeLater;
    cv::Mat m_before;
    cv::Mat m_after;
    cv::Mat m_error;
    cv::Mat m_errorLater;
};

} // namespace

void measureEraseMotion(EraseFrame *earlier,
                        EraseFrame *later,
                        HoleContent content,
                        const std::function<bool()> &stopped)
{
    earlier->toNext = {};
    later->toPrevious = {};
    const cv::Rect holes = earlier->work.box | later->work.box;
    if (holes.empty())
        return;
    const cv::Rect box = grownBox(holes, {around, around}, earlier->hole.size());
    PairMotion motion(*earlier, *later, box);
    if (!motion.measure(stopped))
        return;
    if (content == HoleContent::Filled)
        motion.completeContradictions(stopped);
    else if (!motion.completeAroundHoles(stopped))
        return;
    earlier->toNext = {box, motion.forward};
    later->toPrevious = {box, motion.backward};
}

} // namespace zk::engine
