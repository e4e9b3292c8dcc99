// What carries the matte of one object from frame to frame.
#pragma once

#include "../ZkEngineGlobal.h"
#include "../ZkObjectTracker.h"
#include "../ZkPreparedFrame.h"

#include <opencv2/core.hpp>

namespace zk::engine {

// The work is in two halves, as ObjectTracker describes it: prepareFirst() and prepare() may be called
// from any thread, also while another one is inside start(), advance() or correct(); those three belong
// to one thread at a time. Frames that one backend has prepared are of no use to another one. Whoever
// created it owns it.
class ZKENGINE_EXPORT TrackingBackend
{
public:
    virtual ~TrackingBackend();

    // Begins anew with this object. False, and nothing has changed, when the matte holds no object or does
    // not fit the frame.
    virtual bool start(const PreparedFrame &first, const cv::Mat &matte) = 0;

    // An empty PreparedFrame comes back when the frame is no frame, or not of the size of previous.
    virtual PreparedFrame prepareFirst(const cv::Mat &frame) const = 0;
    virtual PreparedFrame prepare(const PreparedFrame &previous, const cv::Mat &frame) const = 0;

    // The matte of the next frame. Without one, and the state stays, before start() or for a frame of
    // another size. The state stays, too, where another shot begins.
    virtual TrackedFrame advance(const PreparedFrame &next) = 0;

    // The user's word on a frame: it counts as much as the first frame from now on. An empty object says
    // that it is hidden. False, and nothing has changed, before start() or when the matte does not fit.
    virtual bool correct(const PreparedFrame &at, const cv::Mat &matte) = 0;
};

} // namespace zk::engine
