#include "ZkOnnxBackends.h"

#include "ZkFrameEraser.h"
#include "ZkOnnxInpainter.h"
#include "ZkOnnxSegmenter.h"
#include "ZkOnnxTracker.h"

namespace zk::engine {

namespace {

class OnnxBackends : public EngineBackends
{
public:
    OnnxBackends(const OnnxModels &models, FailureReportPtr failures)
        : m_models(models)
        , m_failures(std::move(failures))
    { }

    std::unique_ptr<SegmentationBackend> createSegmenter() const override
    {
        if (!m_models.segmentation)
            return classicalBackends()->createSegmenter();
        return std::make_unique<OnnxSegmenter>(m_models.segmentation, m_failures);
    }
    std::unique_ptr<TrackingBackend> createTracker() const override
    {
        if (!m_models.tracking)
            return classicalBackends()->createTracker();
        return std::make_unique<OnnxTracker>(m_models.tracking, m_failures);
    }
    std::unique_ptr<InpaintingBackend> createEraser(const EraserOptions &options) const override
    {
        if (!m_models.inpainting)
            return classicalBackends()->createEraser(options);
        return std::make_unique<FrameEraser>(
            options,
            std::make_shared<const OnnxInpainter>(
                m_models.inpainting, m_failures, options.workingPixels));
    }

private:
    const OnnxModels m_models;
    const FailureReportPtr m_failures;
};

} // namespace

EngineBackendsPtr onnxBackends(const OnnxModels &models,
                               const std::function<void(const BackendFailure &)> &listener)
{
    return std::make_shared<const OnnxBackends>(models,
                                                std::make_shared<const FailureReport>(listener));
}

} // namespace zk::engine
