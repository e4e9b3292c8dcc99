// What makes a matte of strokes on one frame.
#pragma once

#include "../ZkEngineGlobal.h"
#include "../ZkInteractiveSegmenter.h"

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

// One object per thread; whoever created it owns it.
class ZKENGINE_EXPORT SegmentationBackend
{
public:
    virtual ~SegmentationBackend();

    // Whether neighbours, below, make a difference; where not, nobody needs to read them.
    virtual bool looksAtNeighbours() const = 0;

    // The matte of the object, CV_8UC1 at frame size. previous is the matte that the new strokes correct
    // (empty = none). neighbours are a frame a little before and one after, in this order, which tell what
    // moves by itself; there may be none, and those that are empty or of another size or type are not
    // looked at.
    //
    // Strokes are hard constraints: keep pixels are 255 in the result, remove pixels 0; where both are
    // painted, remove wins. The same arguments give the same result, whatever was segmented before.
    // Empty when there is neither a keep stroke nor a previous matte, or when a size or a type does not
    // fit. Never throws on bad input.
    virtual cv::Mat segment(const cv::Mat &frame,
                            const Scribbles &scribbles,
                            const cv::Mat &previous = {},
                            const std::vector<cv::Mat> &neighbours = {}) = 0;
};

} // namespace zk::engine
