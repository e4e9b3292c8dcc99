// Mattes from strokes by a network. Not public.
#pragma once

#include "ZkFailureReport.h"
#include "ZkSegmentationBackend.h"

namespace zk::engine {

// The built-in segmenter does what the network fails at, or finds nothing in.
class OnnxSegmenter : public SegmentationBackend
{
public:
    OnnxSegmenter(OnnxModelPtr model, FailureReportPtr failures);

    bool looksAtNeighbours() const override;
    cv::Mat segment(const cv::Mat &frame,
                    const Scribbles &scribbles,
                    const cv::Mat &previous,
                    const std::vector<cv::Mat> &neighbours) override;

private:
    cv::Mat run(const cv::Mat &frame,
                const Scribbles &scribbles,
                const cv::Mat &previous,
                const std::vector<cv::Mat> &neighbours) const;

    const OnnxModelPtr m_model;
    const FailureReportPtr m_failures;
    const std::unique_ptr<SegmentationBackend> m_builtIn;
};

} // namespace zk::engine
