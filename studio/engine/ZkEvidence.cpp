#include "ZkEvidence.h"

#include "ZkAppearanceModel.h"
#include "ZkFrameData.h"
#include "ZkMaskTools.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace zk::engine {

namespace {

// The object as a whole moved this far: searches start there.
cv::Point meanOrigin(const WarpedMatte &warped)
{
    const cv::Scalar mean = cv::mean(warped.objectFlow, warped.object > 0.5f);
    return {cvRound(mean[0]), cvRound(mean[1])};
}

// Signed distance to the outline of the warped object, 1 = far inside, -1 = far outside.
cv::Mat depth(const cv::Mat &object, const cv::Rect &area, double scale)
{
    const cv::Mat inside = object > 0.5f;
    cv::Mat in, out;
    cv::distanceTransform(inside, in, cv::DIST_L2, 3);
    cv::distanceTransform(~inside, out, cv::DIST_L2, 3);
    const cv::Mat distance = (in(area)-out(area)) / scale;
    return cv::min(cv::max(distance, -1.0), 1.0);
}

cv::Rect searchedArea(const cv::Mat &object, const EvidenceOptions &options)
{
    const cv::Rect box = cv::boundingRect(object > 0.3f);
    const auto margin = [&](int side) {
        return std::max(options.smallestMargin, cvRound(options.margin * side));
    };
    return grownBox(box, {margin(box.width), margin(box.height)}, object.size());
}

cv::Mat signedShare(const cv::Mat &share)
{
    return share * 2.0 - 1.0;
}

} // namespace

Evidence gatherEvidence(const FrameData &earlier,
                        const cv::Mat &matte,
                        const FrameData &later,
                        const MotionField &motion,
                        const AppearanceModel &appearance,
                        const EvidenceOptions &options)
{
    const WarpedMatte warped = warpMatte(matte, motion, options.warp);
    Evidence evidence;
    evidence.area = searchedArea(warped.object, options);
    if (evidence.area.empty())
        return evidence;
    const auto transfer = [&](const LabelTransferOptions &transferOptions) {
        return signedShare(transferLabels(earlier.descriptors,
                                          matte,
                                          later.descriptors,
                                          evidence.area,
                                          meanOrigin(warped),
                                          transferOptions));
    };
    evidence.network = appearance.networkLogits(later.features, evidence.area);
    evidence.nearLabels = transfer(options.nearTransfer);
    evidence.wideLabels = transfer(options.wideTransfer);
    evidence.warp = signedShare(warped.object(evidence.area));
    evidence.distance = depth(warped.object, evidence.area, options.distanceScale);
    evidence.motion = motionEvidence(motion, warped, evidence.area, options.motion);
    evidence.color = appearance.colorLogits(later.features, evidence.area);
    return evidence;
}

cv::Mat weighedUp(const Evidence &evidence, const EvidenceOptions &options)
{
    cv::Mat sum = evidence.network * options.networkWeight + options.bias;
    cv::scaleAdd(evidence.nearLabels, options.nearWeight, sum, sum);
    cv::scaleAdd(evidence.wideLabels, options.wideWeight, sum, sum);
    cv::scaleAdd(evidence.warp, options.warpWeight, sum, sum);
    cv::scaleAdd(evidence.distance, options.distanceWeight, sum, sum);
    cv::scaleAdd(evidence.motion, options.motionWeight, sum, sum);
    cv::scaleAdd(evidence.color, options.colorWeight, sum, sum);
    return sum;
}

} // namespace zk::engine
