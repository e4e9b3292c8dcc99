#include "ZkSceneCut.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::engine {

namespace {

constexpr int window = 9; // pixels of the halved working copy
constexpr float noise = 6.0f; // variance of the lightness, squared levels of a byte: no texture
constexpr float textured = 20.0f; // the same, from here on there is something to compare
constexpr float alike = 0.5f; // correlation
constexpr int bins = 8; // per channel

cv::Mat windowMean(const cv::Mat &image)
{
    cv::Mat result;
    cv::blur(image, result, {window, window}, {-1, -1}, cv::BORDER_REFLECT);
    return result;
}

// The lightness at half the size: what is compared may be a pixel off.
cv::Mat halvedLightness(const cv::Mat &lab)
{
    cv::Mat light, half;
    cv::extractChannel(lab, light, 0);
    cv::resize(light, half, {}, 0.5, 0.5, cv::INTER_AREA);
    half.convertTo(half, CV_32F);
    return half;
}

// The earlier picture where the later one's pixels come from.
cv::Mat fetched(const cv::Mat &earlier, const cv::Mat &backward)
{
    cv::Mat map, result;
    cv::resize(backward, map, earlier.size(), 0, 0, cv::INTER_AREA);
    const float scale = float(earlier.cols) / float(backward.cols);
    map.forEach<cv::Vec2f>([&](cv::Vec2f &to, const int *at) {
        to = {float(at[1]) + scale * to[0], float(at[0]) + scale * to[1]};
    });
    cv::remap(earlier, result, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return result;
}

// Share of the textured places that correlate. Without any texture there is nothing that speaks against.
double likenessOf(const cv::Mat &a, const cv::Mat &b)
{
    const cv::Mat meanA = windowMean(a), meanB = windowMean(b), squaresA = windowMean(a.mul(a)),
                  squaresB = windowMean(b.mul(b)), products = windowMean(a.mul(b));
    int compared = 0, same = 0;
    for (int y = 0; y < a.rows; ++y) {
        for (int x = 0; x < a.cols; ++x) {
            const float ma = meanA.at<float>(y, x), mb = meanB.at<float>(y, x);
            const float va = squaresA.at<float>(y, x) - ma * ma;
            const float vb = squaresB.at<float>(y, x) - mb * mb;
            if (std::max(va, vb) < textured)
                continue;
            ++compared;
            const float together = products.at<float>(y, x) - ma * mb;
            same += together > alike * std::sqrt((va + noise) * (vb + noise)) ? 1 : 0;
        }
    }
    return compared == 0 ? 1.0 : double(same) / compared;
}

std::vector<float> colorShares(const cv::Mat &lab)
{
    std::vector<float> shares(bins * bins * bins, 0.0f);
    const float one = 1.0f / float(lab.total());
    for (int y = 0; y < lab.rows; ++y) {
        const cv::Vec3b *row = lab.ptr<cv::Vec3b>(y);
        for (int x = 0; x < lab.cols; ++x) {
            const cv::Vec3b &c = row[x];
            // a and b of real pictures fill the middle of their range only.
            const auto bin = [](int value) { return std::clamp((value - 96) / 8, 0, bins - 1); };
            shares[std::size_t((c[0] / 32 * bins + bin(c[1])) * bins + bin(c[2]))] += one;
        }
    }
    return shares;
}

double distanceBetween(const std::vector<float> &a, const std::vector<float> &b)
{
    double common = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        common += std::sqrt(double(a[i]) * double(b[i]));
    return std::sqrt(std::max(0.0, 1.0 - common));
}

} // namespace

Continuity
continuityOf(const cv::Mat &earlierLab, const cv::Mat &laterLab, const MotionField &motion)
{
    Continuity result;
    if (std::min(earlierLab.cols, earlierLab.rows) < 2 * window)
        return result;
    const cv::Mat earlier = halvedLightness(earlierLab);
    result.likeness = likenessOf(fetched(earlier, motion.backward), halvedLightness(laterLab));
    result.distance = distanceBetween(colorShares(earlierLab), colorShares(laterLab));
    return result;
}

bool isSceneCut(const Continuity &continuity, const SceneCutOptions &options)
{
    return continuity.likeness < options.likeness && continuity.distance > options.distance;
}

} // namespace zk::engine
