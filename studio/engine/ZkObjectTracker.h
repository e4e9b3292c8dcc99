// Carries the matte of one object from frame to frame.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkPreparedFrame.h"

#include <opencv2/core.hpp>

#include <memory>

namespace zk::engine {

struct TrackerOptions;

struct TrackedFrame
{
    cv::Mat matte; // CV_8UC1 at frame size; empty when the frame could not be used
    double confidence = 0.0; // 0 .. 1; 0 = the object is lost (the matte is then all 0)
    // The frame does not continue the one that the tracker stands at: another shot begins here. The matte
    // is then all 0, the confidence 0, and the tracker still stands where it stood, so a single flash of
    // something else is passed over, and every frame of another shot says this again.
    bool sceneCut = false;
};

// Tracks one object in one direction. It knows no time: the caller feeds neighbouring frames in the
// order of tracking, so backward tracking is feeding them backward. All frames have one size.
//
// The work on a frame is in two halves, so that they can run on different cores:
//
//     decode  ->  prepare (features and motion, 'const')  ->  advance (the matte; owns the state)
//
//     tracker.start(frame0, matte0);
//     PreparedFrame next = tracker.prepare(tracker.current(), frame1);
//     while (...) {
//         auto ahead = std::async([&] { return tracker.prepare(next, frameAfterNext); });
//         TrackedFrame result = tracker.advance(next);
//         next = ahead.get();
//     }
//
// prepareFirst() and prepare() may be called from any thread, also while another thread is inside
// start(), advance() or correct(); those three belong to one thread at a time.
class ZKENGINE_EXPORT ObjectTracker
{
public:
    ObjectTracker();
    explicit ObjectTracker(const TrackerOptions &options);
    ~ObjectTracker();
    ObjectTracker(ObjectTracker &&) noexcept;
    ObjectTracker &operator=(ObjectTracker &&) noexcept;

    // Begins anew with this object. False, and nothing has changed, when the matte holds no object or
    // does not fit the frame. The first form prepares the frame itself.
    bool start(const cv::Mat &frame, const cv::Mat &matte);
    bool start(const PreparedFrame &first, const cv::Mat &matte);
    bool isStarted() const;

    // Pure. prepare() adds the motion between the two frames; an empty PreparedFrame comes back when
    // the frame is no frame, or not of the size of previous.
    PreparedFrame prepareFirst(const cv::Mat &frame) const;
    PreparedFrame prepare(const PreparedFrame &previous, const cv::Mat &frame) const;

    // The frame that the state stands at: the last one that was started, advanced to or corrected.
    PreparedFrame current() const;

    // Moves on to the next frame. A frame that was prepared against another one than current() is
    // taken too; its motion is then measured here, which costs time. A frame of another shot leaves the
    // state alone. Before start(), or with a frame of another size, the result has no matte and the
    // state stays.
    TrackedFrame advance(const PreparedFrame &next);

    // The user's word on a frame: it replaces the state (which stands at that frame afterwards) and
    // counts as much as the first frame from now on. An empty object is a truth too: the object is
    // then hidden, and advance() searches for it. False, and nothing has changed, before start() or
    // when the matte does not fit.
    bool correct(const PreparedFrame &at, const cv::Mat &matte);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::engine
