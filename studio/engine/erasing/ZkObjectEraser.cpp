#include "ZkObjectEraser.h"

#include "ZkEraseWindow.h"
#include "ZkMaskFollower.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace zk::engine {

namespace {

constexpr int fewestFrames = 8;
constexpr int mostFrames = 40; // what is further away in time is rarely a better source
constexpr double windowBytes = 320e6; // of the pictures alone, in bytes; with masks, motion and
    // sources it is about twice as much

int windowFrames(const EraserOptions &options, const cv::Size &size)
{
    if (options.windowFrames > 0)
        return std::max(fewestFrames, options.windowFrames);
    const double frames = windowBytes / (3.0 * size.width * size.height);
    return int(std::clamp(frames, double(fewestFrames), double(mostFrames)));
}

class EraseRun
{
public:
    EraseRun(EraseSource &source,
             EraseSink &sink,
             const EraserOptions &options,
             const Inpainter &inpainter,
             const EraseCrew::GoOn &goOn,
             EraseTimes *times)
        : m_source(source)
        , m_sink(sink)
        , m_options(options)
        , m_crew(options.threads, goOn)
        , m_times(times)
        , m_follower(options)
        , m_window(options, inpainter, &m_crew, times)
        , m_count(source.frameCount())
    { }

    EraseResult run()
    {
        if (!m_crew.askCaller(0.0))
            return EraseResult::Cancelled;
        while (m_written < m_count) {
            if (!readAhead()
                || !m_window.fill(progress(m_written), progress(m_written + toWrite())))
                return failure();
            if (!writeFinished())
                return failure();
        }
        return m_crew.askCaller(1.0) ? EraseResult::Done : EraseResult::Cancelled;
    }

private:
    double progress(int frames) const { return double(frames) / m_count; }
    EraseResult failure() const { return m_crew.stopped() ? EraseResult::Cancelled : m_failure; }
    bool readFrame(cv::Mat *picture, cv::Mat *mask)
    {
        if (!m_source.read(m_read, picture, mask))
            return false;
        if (m_size.empty()) {
            m_size = picture->size();
            m_capacity = windowFrames(m_options, m_size);
        }
        const bool masked = mask->empty() || (mask->type() == CV_8UC1 && mask->size() == m_size);
        return picture->type() == CV_8UC3 && !m_size.empty() && picture->size() == m_size && masked;
    }
    bool readOne()
    {
        cv::Mat picture, mask;
        if (!readFrame(&picture, &mask)) {
            m_failure = EraseResult::SourceFailed;
            return false;
        }
        m_follower.add(picture, mask);
        if (++m_read == m_count)
            m_follower.end();
        return m_crew.askCaller(progress(m_written));
    }
    // A few frames at a time, so that the machine's cores have something to share.
    bool readAhead()
    {
        const StageTimer timer(&m_times->reading);
        while (m_taken < m_count && (m_size.empty() || int(m_window.size()) < m_capacity)) {
            while (m_read < m_count && m_follower.ready() < 4) {
                if (!readOne())
                    return false;
            }
            const int first = m_taken;
            std::vector<cv::Mat> pictures, masks;
            if (!m_follower.take(4, &m_crew, &pictures, &masks))
                return false;
            m_taken += int(pictures.size());
            if (!m_window.append(first, pictures, masks))
                return false;
        }
        return true;
    }
    int open() const { return int(m_window.size()) - m_finished; }
    // All but the frames that still may learn from what comes.
    int toWrite() const
    {
        return m_taken == m_count ? open() : std::max(1, open() - m_capacity * 3 / 8);
    }
    bool writeFinished()
    {
        const StageTimer timer(&m_times->writing);
        const int count = toWrite();
        for (int i = 0; i < count; ++i) {
            const std::size_t slot = std::size_t(m_finished);
            if (!m_sink.write(m_window.frame(slot).index, finishedPicture(m_window.frame(slot)))) {
                m_failure = EraseResult::SinkFailed;
                return false;
            }
            m_window.finish(slot);
            ++m_finished;
            ++m_written;
            if (!m_crew.askCaller(progress(m_written)))
                return false;
        }
        const int drop = std::max(0, m_finished - m_capacity / 4);
        m_window.dropFirst(std::size_t(drop));
        m_finished -= drop;
        return true;
    }

    EraseSource &m_source;
    EraseSink &m_sink;
    EraserOptions m_options;
    EraseCrew m_crew;
    EraseTimes *m_times;
    MaskFollower m_follower;
    EraseWindow m_window;
    int m_count;
    int m_capacity = 0;
    int m_read = 0;
    int m_taken = 0; // of those that were read: the frames that have been in the window
    int m_written = 0;
    int m_finished = 0; // frames at the window's beginning that were written
    cv::Size m_size;
    EraseResult m_failure = EraseResult::Failed;
};

class Still : public EraseSource, public EraseSink
{
public:
    Still(const cv::Mat &picture, const cv::Mat &mask)
        : m_picture(picture)
        , m_mask(mask)
    { }

    int frameCount() const override { return 1; }
    bool read(int, cv::Mat *picture, cv::Mat *mask) override
    {
        *picture = m_picture;
        *mask = m_mask;
        return true;
    }
    bool write(int, const cv::Mat &picture) override
    {
        result = picture;
        return true;
    }

    cv::Mat result;

private:
    cv::Mat m_picture;
    cv::Mat m_mask;
};

} // namespace

EraseSource::~EraseSource() = default;
EraseSink::~EraseSink() = default;

ObjectEraser::ObjectEraser(const EraserOptions &options)
    : ObjectEraser(options, nullptr)
{ }

ObjectEraser::ObjectEraser(const EraserOptions &options, std::shared_ptr<const Inpainter> inpainter)
    : m_options(options)
    , m_inpainter(std::move(inpainter))
{
    if (!m_inpainter)
        m_inpainter = std::make_shared<PatchInpainter>(options.workingPixels);
}

EraseResult ObjectEraser::run(EraseSource &source,
                              EraseSink &sink,
                              const std::function<bool(double)> &goOn,
                              EraseTimes *times) const
{
    EraseTimes unwanted;
    try {
        return EraseRun(source, sink, m_options, *m_inpainter, goOn, times ? times : &unwanted)
            .run();
    } catch (const std::exception &) {
        return EraseResult::Failed;
    }
}

cv::Mat eraseFromStill(const cv::Mat &picture,
                       const cv::Mat &mask,
                       const EraserOptions &options,
                       const std::function<bool(double)> &goOn)
{
    Still still(picture, mask);
    const bool done = ObjectEraser(options).run(still, still, goOn) == EraseResult::Done;
    return done ? still.result : cv::Mat();
}

} // namespace zk::engine
