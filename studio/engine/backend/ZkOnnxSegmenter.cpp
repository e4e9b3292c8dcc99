#include "ZkOnnxSegmenter.h"

#include "../ZkMatte.h"
#include "../ZkScribbleRules.h"
#include "ZkModelLayout.h"
#include "ZkModelView.h"

#include <utility>

namespace zk::engine {

namespace {

bool isLike(const cv::Mat &neighbour, const cv::Mat &frame)
{
    return neighbour.size() == frame.size() && neighbour.type() == frame.type();
}

} // namespace

OnnxSegmenter::OnnxSegmenter(OnnxModelPtr model, FailureReportPtr failures)
    : m_model(std::move(model))
    , m_failures(std::move(failures))
    , m_builtIn(classicalBackends()->createSegmenter())
{ }

bool OnnxSegmenter::looksAtNeighbours() const
{
    return m_model->takes(tensor::before) || m_model->takes(tensor::after)
        || m_builtIn->looksAtNeighbours();
}

cv::Mat OnnxSegmenter::run(const cv::Mat &frame,
                           const Scribbles &scribbles,
                           const cv::Mat &previous,
                           const std::vector<cv::Mat> &neighbours) const
{
    const ModelView view(*m_model, frame.size());
    const cv::Mat remove = view.mask(scribbles.remove);
    const cv::Mat keep = cv::max(view.mask(scribbles.keep) - remove, 0.0);
    OnnxModel::Pictures pictures {{tensor::image, view.picture(frame)},
                                  {tensor::keep, keep},
                                  {tensor::remove, remove},
                                  {tensor::previous, view.matte(previous)}};
    const auto addNeighbour = [&](const char *name, const cv::Mat &neighbour) {
        if (m_model->takes(name))
            pictures[name] = view.picture(isLike(neighbour, frame) ? neighbour : frame);
    };
    addNeighbour(tensor::before, neighbours.empty() ? frame : neighbours.front());
    addNeighbour(tensor::after, neighbours.empty() ? frame : neighbours.back());
    ModelProblem problem;
    const cv::Mat result = m_model->run(pictures, &problem);
    if (problem)
        m_failures->add(EngineRole::Segmentation, problem);
    return problem ? cv::Mat() : view.matteOf(frame, result);
}

cv::Mat OnnxSegmenter::segment(const cv::Mat &frame,
                               const Scribbles &scribbles,
                               const cv::Mat &previous,
                               const std::vector<cv::Mat> &neighbours)
{
    if (!isSegmentable(frame, scribbles, previous))
        return {};
    cv::Mat matte = run(frame, scribbles, previous, neighbours);
    if (matte.empty() || objectArea(matte) == 0)
        return m_builtIn->segment(frame, scribbles, previous, neighbours);
    obeyScribbles(&matte, scribbles);
    return matte;
}

} // namespace zk::engine
