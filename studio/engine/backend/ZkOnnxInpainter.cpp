#include "ZkOnnxInpainter.h"

#include "../ZkMaskTools.h"
#include "ZkModelLayout.h"
#include "ZkModelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <utility>

namespace zk::engine {

namespace {

constexpr int leastSurroundings = 32; // pixels of the picture

// The hole with as much around it on every side as it is large: the network's pixels are few, and what is
// further away says little about it.
cv::Rect surroundingsOf(const cv::Mat &hole)
{
    const cv::Rect box = cv::boundingRect(hole);
    return grownBox(
        box,
        {std::max(leastSurroundings, box.width), std::max(leastSurroundings, box.height)},
        hole.size());
}

} // namespace

OnnxInpainter::OnnxInpainter(OnnxModelPtr model, FailureReportPtr failures, int workingPixels)
    : m_model(std::move(model))
    , m_failures(std::move(failures))
    , m_builtIn(workingPixels)
{ }

// CV_8UC3 of the size of the part; empty when the network failed.
cv::Mat OnnxInpainter::filled(const cv::Mat &part, const cv::Mat &hole) const
{
    const ModelView view(*m_model, part.size());
    cv::Mat known = part.clone();
    known.setTo(cv::Scalar::all(0), hole);
    cv::Mat picture = view.picture(known);
    const cv::Mat mask = view.mask(hole);
    picture.setTo(cv::Scalar::all(0), mask > 0);
    ModelProblem problem;
    const cv::Mat result = m_model->run({{tensor::image, picture}, {tensor::hole, mask}}, &problem);
    if (problem) {
        m_failures->add(EngineRole::Inpainting, problem);
        return {};
    }
    cv::Mat full, bytes;
    cv::resize(view.framePart(result), full, part.size(), 0, 0, cv::INTER_CUBIC);
    full.convertTo(bytes, CV_8U, 255.0);
    return bytes;
}

bool OnnxInpainter::inpaint(cv::Mat *picture,
                            const cv::Mat &hole,
                            const std::function<bool()> &stopped) const
{
    if (stopped())
        return false;
    const cv::Rect around = surroundingsOf(hole);
    const cv::Mat holePart = hole(around);
    const int area = cv::countNonZero(holePart);
    cv::Mat content;
    if (area > 0 && area < around.area()) // of nothing no network can make anything
        content = filled((*picture)(around), holePart);
    if (content.empty())
        return m_builtIn.inpaint(picture, hole, stopped);
    content.copyTo((*picture)(around), holePart);
    return true;
}

} // namespace zk::engine
