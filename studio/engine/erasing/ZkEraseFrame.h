// One frame inside the eraser's window. Not public.
#pragma once

#include "ZkObjectEraser.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <vector>

namespace zk::engine {

// Where the content of a hole pixel comes from: a place in another frame of the window. Coordinates
// are pixels of the working size, whole numbers are pixel centres.
struct PixelSource
{
    float x = 0.0f;
    float y = 0.0f;
    float cost = 0.0f; // frames that were crossed, plus what made the way doubtful
    std::int32_t frame = -1; // slot in the window; -1 = not known

    bool isKnown() const { return frame >= 0; }
};

// The sources of the pixels of a box.
class SourceMap
{
public:
    void reset(const cv::Rect &box) { m_box = box, m_sources.assign(std::size_t(box.area()), {}); }
    const cv::Rect &box() const { return m_box; }
    PixelSource &at(int x, int y) { return m_sources[index(x, y)]; }
    const PixelSource &at(int x, int y) const { return m_sources[index(x, y)]; }

private:
    std::size_t index(int x, int y) const
    {
        return std::size_t(y - m_box.y) * std::size_t(m_box.width) + std::size_t(x - m_box.x);
    }

    cv::Rect m_box;
    std::vector<PixelSource> m_sources;
};

// Motion to a neighbouring frame, measured and completed around the holes only.
struct FlowField
{
    cv::Rect box; // empty: no motion is known, nothing can be fetched across
    cv::Mat field; // CV_32FC2 over the box, pixels of the working size

    bool contains(const cv::Point &at) const { return box.contains(at); }
    const cv::Vec2f &at(int x, int y) const { return field.at<cv::Vec2f>(y - box.y, x - box.x); }
};

// A picture that is being filled: the frame itself or its copy of working size.
struct Plate
{
    cv::Mat picture; // CV_8UC3
    cv::Mat hole; // CV_8UC1 over box, non-zero = to be filled
    cv::Rect box; // around the hole, in pixels of this plate; empty = no hole
};

struct EraseFrame
{
    int index = 0; // in the clip
    bool filled = false; // its hole shows a filling already
    bool finished = false; // handed out: what its hole shows is truth for the frames after it
    Plate full; // at the frame's own size
    Plate work; // at working size; the same hole, a pixel belongs to it when any part does
    cv::Mat original; // the frame's pixels in full.box
    cv::Mat share; // CV_8UC1 over full.box: how much of the filling shows, 255 = it alone
    cv::Mat usable; // CV_8UC1, working size: pixels that may be copied from
    cv::Mat clean; // the same without those so near to the hole that they may show what is erased
    cv::Mat hole; // CV_8UC1, working size
    FlowField toPrevious;
    FlowField toNext;
    SourceMap earlier; // sources before this frame, over work.box
    SourceMap later;

    bool isWhole() const { return work.box.empty(); }
};

// Grows the mask, which may be empty. A picture without a hole is taken over, not copied.
EraseFrame makeEraseFrame(int index,
                          const cv::Mat &picture,
                          const cv::Mat &mask,
                          const EraserOptions &options);

// The frame as it is handed out: the filling fades into the frame's own pixels at the border of the
// grown mask, and everything outside is the frame itself.
cv::Mat finishedPicture(const EraseFrame &frame);

} // namespace zk::engine
