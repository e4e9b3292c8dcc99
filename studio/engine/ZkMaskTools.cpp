#include "ZkMaskTools.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdint>

namespace zk::engine {

std::vector<int> sampledPixels(const cv::Mat &mask, int count)
{
    std::vector<int> all;
    for (int y = 0; y < mask.rows; ++y) {
        const uchar *row = mask.ptr(y);
        for (int x = 0; x < mask.cols; ++x) {
            if (row[x] != 0)
                all.push_back(y * mask.cols + x);
        }
    }
    const auto total = std::int64_t(all.size());
    if (total <= count)
        return all;
    // One out of each of count equal stretches, at a random place so that no pattern is in phase.
    cv::RNG random(0x9e3779b9);
    std::vector<int> chosen;
    chosen.reserve(count);
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t first = i * total / count;
        const std::int64_t last = (i + 1) * total / count;
        chosen.push_back(all[first + random.uniform(0, int(last - first))]);
    }
    return chosen;
}

cv::Mat connectedTo(const cv::Mat &mask, const cv::Mat &anchors)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(mask, labels, 8, CV_32S);
    std::vector<uchar> kept(count, 0);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (anchors.at<uchar>(y, x) != 0)
                kept[labels.at<int>(y, x)] = 255;
        }
    }
    kept[0] = 0;
    cv::Mat result(mask.size(), CV_8U);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x)
            result.at<uchar>(y, x) = kept[labels.at<int>(y, x)];
    }
    return result;
}

cv::Mat shrunkMask(const cv::Mat &mask, int pixels)
{
    cv::Mat result;
    const int side = 2 * pixels + 1;
    cv::erode(mask, result, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    return result;
}

cv::Mat grownMask(const cv::Mat &mask, int pixels)
{
    cv::Mat result;
    const int side = 2 * pixels + 1;
    cv::dilate(mask, result, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    return result;
}

cv::Mat asShare(const cv::Mat &picture)
{
    cv::Mat share;
    picture.convertTo(share, CV_32F, 1.0 / 255.0);
    return share;
}

double completeness(int area, double usualArea)
{
    return std::min(1.0, area / std::max(1.0, usualArea * 0.5));
}

cv::Rect grownBox(const cv::Rect &box, const cv::Size &margin, const cv::Size &within)
{
    const cv::Rect grown(box.x - margin.width,
                         box.y - margin.height,
                         box.width + 2 * margin.width,
                         box.height + 2 * margin.height);
    return grown & cv::Rect({0, 0}, within);
}

} // namespace zk::engine
