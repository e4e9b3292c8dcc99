// Brings the content of the sources into the holes. Not public.
#pragma once

#include "ZkEraseFrame.h"

#include <functional>
#include <vector>

namespace zk::engine {

enum class PlateSize { Work, Full };

// What was computed for a frame, not yet part of it: other frames may be reading the frame.
struct HolePaint
{
    cv::Mat fresh; // CV_8UC1 over work.box: the pixels that this is about
    cv::Mat work; // CV_8UC3 over work.box
    cv::Mat full; // CV_8UC3 over full.box; empty for PlateSize::Work
    cv::Mat fullFresh; // CV_8UC1 over full.box: its pixels that were painted
};

// Paints those of the wanted pixels (CV_8UC1 over work.box) that have a source. The brightness and
// colour of each source is matched to what surrounds the pixels. Reads all frames, writes none. Once
// stopped says yes the result does not matter.
HolePaint paintHole(const std::vector<EraseFrame> &frames,
                    int slot,
                    const cv::Mat &wanted,
                    PlateSize size,
                    const std::function<bool()> &stopped);

void applyPaint(EraseFrame *frame, const HolePaint &paint);

} // namespace zk::engine
