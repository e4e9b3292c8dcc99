// From what the user painted on one frame to the matte of the object.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

#include <memory>
#include <vector>

namespace zk::engine {

struct InteractiveSegmenterOptions;

// What the user painted on one frame: CV_8UC1 at frame size, non-zero = painted; an empty Mat = none.
struct Scribbles
{
    cv::Mat keep;
    cv::Mat remove;
};

// Segments single frames. Its only state is a cache of the motion and the features of the last frame, so that
// the second and later strokes on a frame cost less; results never depend on what was segmented before.
// Not thread-safe: one object per thread.
class ZKENGINE_EXPORT InteractiveSegmenter
{
public:
    InteractiveSegmenter();
    explicit InteractiveSegmenter(const InteractiveSegmenterOptions &options);
    ~InteractiveSegmenter();
    InteractiveSegmenter(InteractiveSegmenter &&) noexcept;
    InteractiveSegmenter &operator=(InteractiveSegmenter &&) noexcept;

    // The matte of the object, CV_8UC1 at frame size, with a soft outline.
    // previous is the matte that the new strokes correct (empty = none). Strokes are hard constraints:
    // keep pixels are 255 in the result, remove pixels 0; where both are painted, remove wins.
    // neighbours: frames a little earlier and later, which tell what moves by itself; the first two of the
    // frame's size and type count.
    // Empty when there is neither a keep stroke nor a previous matte, or when a size or a type does
    // not fit. Never throws on bad input.
    cv::Mat segment(const cv::Mat &frame,
                    const Scribbles &scribbles,
                    const cv::Mat &previous = {},
                    const std::vector<cv::Mat> &neighbours = {});

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::engine
