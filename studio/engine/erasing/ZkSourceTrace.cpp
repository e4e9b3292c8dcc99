#include "ZkSourceTrace.h"

#include <algorithm>

namespace zk::engine {

namespace {

constexpr float contradiction = 1.0f; // squared pixels between there and back
constexpr float finishedCost =
    4.0f; // a pixel that is a copy itself counts like so many frames more
constexpr float contradictionCost = 1.0f; // for each squared pixel
constexpr float besideCost = 3.0f; // a pixel next to a hole counts like so many frames more

// One step of the trace, from a frame to its neighbour.
class Step
{
public:
    Step(std::vector<EraseFrame> *frames, int slot, Direction direction)
        : m_frame((*frames)[std::size_t(slot)])
        , m_other((*frames)[std::size_t(direction == Direction::Earlier ? slot - 1 : slot + 1)])
        , m_otherSlot(direction == Direction::Earlier ? slot - 1 : slot + 1)
        , m_direction(direction)
        , m_there(direction == Direction::Earlier ? m_frame.toPrevious : m_frame.toNext)
        , m_back(direction == Direction::Earlier ? m_other.toNext : m_other.toPrevious)
    { }

    bool isPossible() const { return !m_there.box.empty() && !m_frame.isWhole(); }
    const cv::Rect &box() const { return m_frame.work.box; }

    // any: a source of the other direction will do too.
    PixelSource from(int x, int y, bool any) const
    {
        const cv::Vec2f go = m_there.at(x, y);
        const cv::Point2f end(float(x) + go[0], float(y) + go[1]);
        const cv::Point pixel(cvRound(end.x), cvRound(end.y));
        if (!cv::Rect({0, 0}, m_other.hole.size()).contains(pixel))
            return {};
        const float error = contradictionAt(pixel, go);
        if (error > contradiction)
            return {};
        const float cost = 1.0f + contradictionCost * error;
        if (m_other.usable.at<uchar>(pixel)) {
            const bool isClean = m_other.clean.at<uchar>(pixel) != 0;
            return {end.x, end.y, isClean ? cost : cost + besideCost, m_otherSlot};
        }
        return inherited(pixel, end, cost, any);
    }

private:
    float contradictionAt(const cv::Point &pixel, const cv::Vec2f &go) const
    {
        if (!m_back.contains(pixel))
            return 0.5f * contradiction;
        const cv::Vec2f sum = go + m_back.at(pixel.x, pixel.y);
        return sum.dot(sum);
    }
    PixelSource
    inherited(const cv::Point &pixel, const cv::Point2f &end, float cost, bool any) const
    {
        if (!m_other.work.box.contains(pixel))
            return {};
        PixelSource source = ownSource(pixel, any);
        const bool shows = m_other.finished || (any && !m_other.hole.at<uchar>(pixel));
        if (!source.isKnown() && shows)
            return {end.x, end.y, cost + finishedCost, m_otherSlot};
        source.x += end.x - float(pixel.x);
        source.y += end.y - float(pixel.y);
        source.cost += cost;
        return source;
    }
    PixelSource ownSource(const cv::Point &pixel, bool any) const
    {
        const bool earlier = m_direction == Direction::Earlier;
        const SourceMap &first = earlier ? m_other.earlier : m_other.later;
        const SourceMap &second = earlier ? m_other.later : m_other.earlier;
        const PixelSource source = first.at(pixel.x, pixel.y);
        return source.isKnown() || !any ? source : second.at(pixel.x, pixel.y);
    }

    const EraseFrame &m_frame;
    const EraseFrame &m_other;
    int m_otherSlot;
    Direction m_direction;
    const FlowField &m_there;
    const FlowField &m_back;
};

template<typename Wanted>
void stepThrough(std::vector<EraseFrame> *frames, Direction direction, bool any, Wanted wanted)
{
    const int count = int(frames->size());
    for (int i = 1; i < count; ++i) {
        const int slot = direction == Direction::Earlier ? i : count - 1 - i;
        EraseFrame &frame = (*frames)[std::size_t(slot)];
        const Step step(frames, slot, direction);
        if (!step.isPossible())
            continue;
        SourceMap &map = direction == Direction::Earlier ? frame.earlier : frame.later;
        const cv::Rect &box = step.box();
        for (int y = box.y; y < box.br().y; ++y) {
            for (int x = box.x; x < box.br().x; ++x) {
                if (!frame.usable.at<uchar>(y, x) && wanted(frame, x, y))
                    map.at(x, y) = step.from(x, y, any);
            }
        }
    }
}

bool isUnseen(const EraseFrame &frame, int x, int y)
{
    return !frame.usable.at<uchar>(y, x) && !frame.earlier.at(x, y).isKnown()
        && !frame.later.at(x, y).isKnown();
}

} // namespace

void resetSources(std::vector<EraseFrame> *frames)
{
    for (EraseFrame &frame : *frames) {
        frame.earlier.reset(frame.work.box);
        frame.later.reset(frame.work.box);
    }
}

void traceSources(std::vector<EraseFrame> *frames, Direction direction)
{
    stepThrough(frames, direction, false, [](const EraseFrame &, int, int) { return true; });
}

void traceLeftSources(std::vector<EraseFrame> *frames, Direction direction)
{
    stepThrough(frames, direction, true, isUnseen);
}

} // namespace zk::engine
