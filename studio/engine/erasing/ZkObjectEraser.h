// Takes objects out of a clip: what they hid is brought from frames that show it, along the motion of
// the background, and made up where no frame does.
#pragma once

#include "../ZkEngineGlobal.h"
#include "ZkInpainter.h"

#include <opencv2/core.hpp>

#include <functional>
#include <memory>

namespace zk::engine {

struct EraserOptions
{
    // The mask is grown by this share of the frame's height, so that blurred outlines go too; in the
    // outer part of what it was grown by the filling fades into the frame.
    double grow = 0.01;
    double feather = 0.004;
    // Downwards it is grown by this share besides: there lie the shadows of what stands on the ground.
    double below = 0.0;
    // What moves along with the object, against the background, is erased too, as far as it is connected
    // to the mask and no further away from it than this share of the frame's height: parts that the mask
    // has missed, a part of its shadow. 0 = the masks are right.
    double follow = 0.0;
    int workingPixels = 854 * 480; // area at which motion is measured; colours keep their full size
    int windowFrames = 0; // frames held at a time, 8 or more; 0 = as many as memory allows
    int threads = 0; // 0 = one per processor; the result does not depend on it
};

// Frames in the order of the clip. Called by the thread that runs the eraser, once for each index in
// ascending order.
class ZKENGINE_EXPORT EraseSource
{
public:
    virtual ~EraseSource();
    virtual int frameCount() const = 0;
    // picture: CV_8UC3 in R, G, B order, all frames of one size; mask: CV_8UC1 of that size, 255 = to be
    // erased, or empty when there is nothing. The eraser keeps both without copying them and does not write
    // to them. False ends the run.
    virtual bool read(int index, cv::Mat *picture, cv::Mat *mask) = 0;
};

class ZKENGINE_EXPORT EraseSink
{
public:
    virtual ~EraseSink();
    // One call per frame in ascending order, by the thread that runs the eraser. picture: CV_8UC3;
    // a frame without a mask is the very picture that was read. False ends the run.
    virtual bool write(int index, const cv::Mat &picture) = 0;
};

// Where the time of a run went, in seconds of the clock.
struct EraseTimes
{
    double reading = 0.0; // the source, and the copies of working size
    double motion = 0.0;
    double painting = 0.0; // tracing what other frames show, and bringing it
    double makingUp = 0.0; // what no frame shows
    double writing = 0.0; // the sink
};

enum class EraseResult {
    Done,
    Cancelled, // goOn said so; the sink has the frames up to some point
    SourceFailed, // a frame could not be read, or had another size or type
    SinkFailed,
    Failed, // no memory
};

// Pixels outside the grown mask, and outside what is followed, are those of the source. Where nothing is known of what is behind the
// object it is made up once and carried along the motion. A frame whose every pixel is masked, and to
// which no other frame lends anything, stays as it is. Nothing is fetched across a scene cut.
//
// An eraser holds no state between runs; several may run on different threads.
class ZKENGINE_EXPORT ObjectEraser
{
public:
    explicit ObjectEraser(const EraserOptions &options = {});
    // inpainter: makes up what no frame shows; null = the built-in one.
    ObjectEraser(const EraserOptions &options, std::shared_ptr<const Inpainter> inpainter);

    // Blocks. goOn is called on this thread every few hundredths of a second with the share of the
    // work that is done, 0 .. 1, never falling; when it returns false the run ends within 0.2 s. It may
    // be empty. times, unless null, is added to.
    EraseResult run(EraseSource &source,
                    EraseSink &sink,
                    const std::function<bool(double)> &goOn = {},
                    EraseTimes *times = nullptr) const;

private:
    EraserOptions m_options;
    std::shared_ptr<const Inpainter> m_inpainter;
};

// The same for a single picture; empty when the picture or the mask is none, or when goOn said no.
ZKENGINE_EXPORT cv::Mat eraseFromStill(const cv::Mat &picture,
                                       const cv::Mat &mask,
                                       const EraserOptions &options = {},
                                       const std::function<bool(double)> &goOn = {});

} // namespace zk::engine
