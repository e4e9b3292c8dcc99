// Carries a matte from frame to frame by a network. Not public.
#pragma once

#include "ZkFailureReport.h"
#include "ZkTrackingBackend.h"

namespace zk::engine {

// Frames are prepared as for the built-in tracker: that tells where another shot begins, and the built-in
// tracker takes over when the network fails. It then goes on until the next start(): it learns the object
// as it goes along, and would not from single frames.
class OnnxTracker : public TrackingBackend
{
public:
    OnnxTracker(OnnxModelPtr model, FailureReportPtr failures);

    bool start(const PreparedFrame &first, const cv::Mat &matte) override;
    PreparedFrame prepareFirst(const cv::Mat &frame) const override;
    PreparedFrame prepare(const PreparedFrame &previous, const cv::Mat &frame) const override;
    TrackedFrame advance(const PreparedFrame &next) override;
    bool correct(const PreparedFrame &at, const cv::Mat &matte) override;

private:
    struct Known
    {
        PreparedFrame frame;
        cv::Mat matte;
    };

    bool fits(const PreparedFrame &frame) const;
    TrackedFrame run(const PreparedFrame &next) const;
    void fallBack();

    const OnnxModelPtr m_model;
    const FailureReportPtr m_failures;
    ObjectTracker m_builtIn; // started only after a failure
    bool m_hasFailed = false;
    Known m_current; // where the state stands; empty before start()
    Known m_truth; // of the user, the last one with an object in it
    Known m_seen; // the last frame on which the object was seen
};

} // namespace zk::engine
