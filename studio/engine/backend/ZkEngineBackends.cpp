#include "ZkEngineBackends.h"

#include "ZkFrameEraser.h"

namespace zk::engine {

SegmentationBackend::~SegmentationBackend() = default;
TrackingBackend::~TrackingBackend() = default;
InpaintingBackend::~InpaintingBackend() = default;
EngineBackends::~EngineBackends() = default;

namespace {

class ClassicalSegmenter : public SegmentationBackend
{
public:
    bool looksAtNeighbours() const override { return true; }
    cv::Mat segment(const cv::Mat &frame,
                    const Scribbles &scribbles,
                    const cv::Mat &previous,
                    const std::vector<cv::Mat> &neighbours) override
    {
        return m_segmenter.segment(frame, scribbles, previous, neighbours);
    }

private:
    InteractiveSegmenter m_segmenter;
};

class ClassicalTracker : public TrackingBackend
{
public:
    bool start(const PreparedFrame &first, const cv::Mat &matte) override
    {
        return m_tracker.start(first, matte);
    }
    PreparedFrame prepareFirst(const cv::Mat &frame) const override
    {
        return m_tracker.prepareFirst(frame);
    }
    PreparedFrame prepare(const PreparedFrame &previous, const cv::Mat &frame) const override
    {
        return m_tracker.prepare(previous, frame);
    }
    TrackedFrame advance(const PreparedFrame &next) override { return m_tracker.advance(next); }
    bool correct(const PreparedFrame &at, const cv::Mat &matte) override
    {
        return m_tracker.correct(at, matte);
    }

private:
    ObjectTracker m_tracker;
};

class ClassicalBackends : public EngineBackends
{
public:
    std::unique_ptr<SegmentationBackend> createSegmenter() const override
    {
        return std::make_unique<ClassicalSegmenter>();
    }
    std::unique_ptr<TrackingBackend> createTracker() const override
    {
        return std::make_unique<ClassicalTracker>();
    }
    std::unique_ptr<InpaintingBackend> createEraser(const EraserOptions &options) const override
    {
        return std::make_unique<FrameEraser>(options, nullptr);
    }
};

} // namespace

EngineBackendsPtr classicalBackends()
{
    static const EngineBackendsPtr backends = std::make_shared<const ClassicalBackends>();
    return backends;
}

} // namespace zk::engine
