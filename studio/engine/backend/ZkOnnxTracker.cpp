#include "ZkOnnxTracker.h"

#include "../ZkFrameData.h"
#include "../ZkMaskTools.h"
#include "../ZkMatte.h"
#include "../ZkTrackerOptions.h"
#include "ZkModelLayout.h"
#include "ZkModelView.h"

#include <algorithm>
#include <utility>

namespace zk::engine {

namespace {

const cv::Mat &pixelsOf(const PreparedFrame &prepared)
{
    return prepared.data()->frame;
}

// How sure the network is of the object's pixels: 0 for 0.5, 1 for 1. An object of which little is left
// since the user showed it is less sure.
double confidenceOf(const cv::Mat &matte, const cv::Mat &shown)
{
    const cv::Mat object = hardMatte(matte);
    const int area = cv::countNonZero(object);
    if (area == 0)
        return 0.0;
    const double certainty = cv::mean(matte, object)[0] / 127.5 - 1.0;
    return std::clamp(certainty, 0.0, 1.0) * completeness(area, objectArea(shown));
}

} // namespace

OnnxTracker::OnnxTracker(OnnxModelPtr model, FailureReportPtr failures)
    : m_model(std::move(model))
    , m_failures(std::move(failures))
{ }

PreparedFrame OnnxTracker::prepareFirst(const cv::Mat &frame) const
{
    return m_builtIn.prepareFirst(frame);
}

PreparedFrame OnnxTracker::prepare(const PreparedFrame &previous, const cv::Mat &frame) const
{
    return m_builtIn.prepare(previous, frame);
}

bool OnnxTracker::fits(const PreparedFrame &frame) const
{
    return !m_current.frame.isEmpty() && frame.size() == m_current.frame.size();
}

bool OnnxTracker::start(const PreparedFrame &first, const cv::Mat &matte)
{
    if (first.isEmpty() || !isMatteOf(matte, first.size()) || objectArea(matte) == 0)
        return false;
    m_current = {first, matte.clone()};
    m_truth = m_seen = m_current;
    m_hasFailed = false;
    return true;
}

bool OnnxTracker::correct(const PreparedFrame &at, const cv::Mat &matte)
{
    if (!fits(at) || !isMatteOf(matte, at.size()))
        return false;
    m_current = {at, matte.clone()};
    if (objectArea(matte) > 0)
        m_truth = m_seen = m_current;
    return !m_hasFailed || m_builtIn.correct(at, matte);
}

TrackedFrame OnnxTracker::advance(const PreparedFrame &next)
{
    if (!fits(next))
        return {};
    TrackedFrame result;
    if (!m_hasFailed)
        result = run(next);
    if (result.matte.empty()) {
        if (!m_hasFailed)
            fallBack();
        result = m_builtIn.advance(next);
    }
    if (result.sceneCut)
        return result;
    m_current = {next, result.matte};
    if (objectArea(result.matte) > 0)
        m_seen = m_current;
    return result;
}

// No matte: the network has failed.
TrackedFrame OnnxTracker::run(const PreparedFrame &next) const
{
    TrackedFrame tracked;
    tracked.matte = cv::Mat::zeros(next.size(), CV_8U);
    tracked.sceneCut =
        transitionBetween(m_current.frame.data(), *next.data(), TrackerOptions()).cut;
    if (tracked.sceneCut)
        return tracked;
    const ModelView view(*m_model, next.size());
    OnnxModel::Pictures pictures {{tensor::image, view.picture(pixelsOf(next))},
                                  {tensor::previousMatte, view.matte(m_seen.matte)}};
    if (m_model->takes(tensor::previousImage))
        pictures[tensor::previousImage] = view.picture(pixelsOf(m_seen.frame));
    if (m_model->takes(tensor::firstImage))
        pictures[tensor::firstImage] = view.picture(pixelsOf(m_truth.frame));
    if (m_model->takes(tensor::firstMatte))
        pictures[tensor::firstMatte] = view.matte(m_truth.matte);
    ModelProblem problem;
    const cv::Mat result = m_model->run(pictures, &problem);
    if (problem) {
        m_failures->add(EngineRole::Tracking, problem);
        return {};
    }
    const cv::Mat matte = view.matteOf(pixelsOf(next), result);
    tracked.confidence = confidenceOf(matte, m_truth.matte);
    if (tracked.confidence > 0.0)
        tracked.matte = matte;
    return tracked;
}

// The built-in tracker learns the object where the user has shown it, and goes on from where the network
// was.
void OnnxTracker::fallBack()
{
    m_hasFailed = true;
    m_builtIn.start(m_truth.frame, m_truth.matte);
    if (m_current.frame.data() != m_truth.frame.data())
        m_builtIn.correct(m_current.frame, m_current.matte);
}

} // namespace zk::engine
