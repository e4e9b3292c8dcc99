#include "ZkFlowCompletion.h"

#include "../ZkMaskTools.h"
#include "ZkDiffusion.h"
#include "ZkMotionModel.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

constexpr int smallestSide = 32; // below it the flow's patches and pyramid do not fit
constexpr int around = 32; // pixels around an unknown area that its motion is taken from
constexpr float foreign = 1.0f; // squared pixels off the plane's motion: another object's
constexpr int speck = 400; // pixels
constexpr int mostSamples = 400;

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

} // namespace

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

// Specks, which have nothing to fit to, are completed all at once.
void completeFlow(cv::Mat *flow, const cv::Mat &unknown, const cv::Mat &contradictions)
{
    cv::Mat state(flow->size(), CV_8U, cv::Scalar(DiffusionKnown));
    state.setTo(DiffusionOutside, contradictions > mostContradiction);
    state.setTo(DiffusionUnknown, unknown);
    cv::Mat labels, boxes, centers;
    const int count = cv::connectedComponentsWithStats(unknown, labels, boxes, centers);
    for (int i = 1; i < count; ++i) {
        const int *stats = boxes.ptr<int>(i);
        if (stats[cv::CC_STAT_AREA] < speck)
            continue;
        const cv::Rect box(stats[0], stats[1], stats[2], stats[3]);
        const cv::Rect area = grownBox(box, {around, around}, flow->size());
        const cv::Mat others = (state(area) == DiffusionUnknown) & (labels(area) != i);
        cv::Mat own = state(area).clone();
        own.setTo(DiffusionOutside, others);
        AreaCompletion((*flow)(area), own).run(std::uint64_t(i));
        state(area).setTo(DiffusionKnown, own == DiffusionUnknown);
    }
    diffuse(flow, state);
}

cv::Mat movedBack(const cv::Mat &picture, const cv::Mat &flow)
{
    cv::Mat map(flow.size(), CV_32FC2), moved;
    map.forEach<cv::Vec2f>([&](cv::Vec2f &place, const int *at) {
        place = flow.at<cv::Vec2f>(at[0], at[1]) + cv::Vec2f(float(at[1]), float(at[0]));
    });
    cv::remap(picture, moved, map, cv::noArray(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return moved;
}

} // namespace zk::engine
