// Makes up what no frame shows by a network. Not public.
#pragma once

#include "../erasing/ZkInpainter.h"
#include "ZkFailureReport.h"

namespace zk::engine {

// The built-in inpainter does what the network fails at.
class OnnxInpainter : public Inpainter
{
public:
    // workingPixels: of the built-in one.
    OnnxInpainter(OnnxModelPtr model, FailureReportPtr failures, int workingPixels);

    bool inpaint(cv::Mat *picture,
                 const cv::Mat &hole,
                 const std::function<bool()> &stopped) const override;

private:
    cv::Mat filled(const cv::Mat &part, const cv::Mat &hole) const;

    const OnnxModelPtr m_model;
    const FailureReportPtr m_failures;
    const PatchInpainter m_builtIn;
};

} // namespace zk::engine
