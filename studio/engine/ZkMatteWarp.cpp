#include "ZkMatteWarp.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

// field is premultiplied with weight. Each level asks the next coarser one for what it lacks.
void pushPull(cv::Mat &field, cv::Mat &weight)
{
    if (std::min(field.cols, field.rows) <= 1)
        return;
    const cv::Size half((field.cols + 1) / 2, (field.rows + 1) / 2);
    cv::Mat coarseField, coarseWeight;
    cv::resize(field, coarseField, half, 0, 0, cv::INTER_AREA);
    cv::resize(weight, coarseWeight, half, 0, 0, cv::INTER_AREA);
    pushPull(coarseField, coarseWeight);
    cv::resize(coarseField, coarseField, field.size(), 0, 0, cv::INTER_LINEAR);
    cv::resize(coarseWeight, coarseWeight, field.size(), 0, 0, cv::INTER_LINEAR);
    // The coarse share is small wherever there is weight of its own: vectors that are known stay.
    for (int y = 0; y < field.rows; ++y) {
        for (int x = 0; x < field.cols; ++x) {
            float &own = weight.at<float>(y, x);
            const float share = std::max(1e-3f, 1.0f - own);
            field.at<cv::Vec2f>(y, x) += share * coarseField.at<cv::Vec2f>(y, x);
            own += share * coarseWeight.at<float>(y, x);
        }
    }
}

cv::Mat identityMap(const cv::Size &size)
{
    cv::Mat map(size, CV_32FC2);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x)
            map.at<cv::Vec2f>(y, x) = {float(x), float(y)};
    }
    return map;
}

cv::Mat sampled(const cv::Mat &image, const cv::Mat &map)
{
    cv::Mat result;
    cv::remap(image, result, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return result;
}

// For each pixel of the later frame the place p with p + flow(p) = pixel.
cv::Mat originMap(const cv::Mat &flow, const cv::Mat &identity, int rounds)
{
    // A clone, because assigning an expression writes into the pixels that a plain copy would share.
    cv::Mat origin = identity.clone();
    for (int round = 0; round < rounds; ++round)
        cv::subtract(identity, sampled(flow, origin), origin);
    return origin;
}

} // namespace

cv::Mat
flowTrust(const cv::Mat &flow, const cv::Mat &back, const cv::Rect &area, double consistency)
{
    cv::Mat result(area.size(), CV_32F);
    const cv::Rect picture({0, 0}, flow.size());
    result.forEach<float>([&](float &value, const int *index) {
        const cv::Point from(area.x + index[1], area.y + index[0]);
        const cv::Vec2f there = flow.at<cv::Vec2f>(from);
        const cv::Point at(cvRound(float(from.x) + there[0]), cvRound(float(from.y) + there[1]));
        value = 0.0f;
        if (!picture.contains(at))
            return;
        const cv::Vec2f loop = there + back.at<cv::Vec2f>(at);
        value = float(std::exp(-loop.dot(loop) / (2.0 * consistency * consistency)));
    });
    return result;
}

cv::Mat continuedField(const cv::Mat &field, const cv::Mat &weight)
{
    cv::Mat filled(field.size(), CV_32FC2);
    cv::Mat sum = weight.clone();
    for (int y = 0; y < field.rows; ++y) {
        for (int x = 0; x < field.cols; ++x)
            filled.at<cv::Vec2f>(y, x) = field.at<cv::Vec2f>(y, x) * weight.at<float>(y, x);
    }
    pushPull(filled, sum);
    for (int y = 0; y < field.rows; ++y) {
        for (int x = 0; x < field.cols; ++x)
            filled.at<cv::Vec2f>(y, x) /= std::max(sum.at<float>(y, x), 1e-6f);
    }
    return filled;
}

WarpedMatte
warpMatte(const cv::Mat &matte, const MotionField &motion, const MatteWarpOptions &options)
{
    const cv::Mat trusted =
        flowTrust(motion.forward, motion.backward, {{0, 0}, matte.size()}, options.consistency);
    const cv::Mat objectFlow = continuedField(motion.forward, trusted.mul(matte));
    const cv::Mat identity = identityMap(matte.size());
    const cv::Mat origin = originMap(objectFlow, identity, options.rounds);
    return {sampled(matte, origin), origin - identity};
}

} // namespace zk::engine
