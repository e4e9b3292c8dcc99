#include "ZkMotionEvidence.h"

#include "ZkMaskTools.h"
#include "erasing/ZkMotionModel.h"

#include <vector>

namespace zk::engine {

namespace {

constexpr int mostSamples = 600; // of the background's motion

float squaredLength(const cv::Vec2f &vector)
{
    return vector.dot(vector);
}

} // namespace

cv::Mat motionEvidence(const MotionField &motion,
                       const WarpedMatte &warped,
                       const cv::Rect &area,
                       const MotionEvidenceOptions &options)
{
    cv::Mat result = cv::Mat::zeros(area.size(), CV_32F);
    const cv::Mat background = ~grownMask(warped.object > 0.5f, options.gap);
    MotionModel model;
    if (!model.fit(motionSamples(motion.backward, background, mostSamples),
                   {{0, 0}, motion.backward.size()},
                   1))
        return result;
    const cv::Mat trusted = flowTrust(motion.backward, motion.forward, area, options.consistency);
    const float noise = float(options.noise * options.noise);
    result.forEach<float>([&](float &value, const int *index) {
        const cv::Point at(area.x + index[1], area.y + index[0]);
        const cv::Vec2f own = motion.backward.at<cv::Vec2f>(at);
        const float behind = squaredLength(own - model.motionAt(at));
        const float object = squaredLength(own - warped.objectFlow.at<cv::Vec2f>(at));
        const float share = (behind - object) / (behind + object + noise);
        value = share * trusted.at<float>(index[0], index[1]);
    });
    return result;
}

} // namespace zk::engine
