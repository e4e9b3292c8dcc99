#include "Matte_p.h"

#include "Pixels_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

constexpr int regionGrid = 4;
constexpr double sigmasFrom10To90 = 2.5631;
// Softness beyond the contour that a shift takes along, px at 1080.
constexpr double shiftedSoftness = 48;
constexpr int solidAlpha = 243; // from here on a pixel's colour counts as the object's own
constexpr double colourReach = 9; // px at 1080 within which object colour is looked for

float sampled(const cv::Mat &matte, const cv::Point2f &at)
{
    const float x = std::min(std::max(at.x, 0.0F), static_cast<float>(matte.cols - 1));
    const float y = std::min(std::max(at.y, 0.0F), static_cast<float>(matte.rows - 1));
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const int right = std::min(left + 1, matte.cols - 1);
    const int bottom = std::min(top + 1, matte.rows - 1);
    const float u = x - static_cast<float>(left);
    const float v = y - static_cast<float>(top);
    const float above = matte.at<uchar>(top, left) * (1 - u) + matte.at<uchar>(top, right) * u;
    const float below =
        matte.at<uchar>(bottom, left) * (1 - u) + matte.at<uchar>(bottom, right) * u;
    return above * (1 - v) + below * v;
}

// Every pixel takes the value from `shift` px further in, straight across the contour: the edge
// moves and keeps its profile, where a dilation would harden it.
cv::Mat shifted(const cv::Mat &matte, double shift, double scale, const ContourField::CutSides &cut)
{
    const double reach = std::abs(shift) + shiftedSoftness * scale;
    const ContourField contour(matte, reach, contourSmoothing(scale), cut);
    cv::Mat result(matte.size(), CV_8U);
    forEachRow(matte.rows, [&](int y) {
        for (int x = 0; x < matte.cols; ++x) {
            const cv::Point2f at(static_cast<float>(x), static_cast<float>(y));
            const cv::Point2f from = at - contour.normalAt(x, y) * static_cast<float>(shift);
            result.at<uchar>(y, x) = toByte(sampled(matte, from));
        }
    });
    return result;
}

cv::Mat feathered(const cv::Mat &matte, double sigma)
{
    cv::Mat result;
    blurred(matte, sigma).convertTo(result, CV_8U, 1.0 / 257);
    return result;
}

} // namespace

cv::Rect boxOf(const cv::Mat &alpha)
{
    return cv::boundingRect(alpha);
}

cv::Rect regionAround(const cv::Rect &box, double reach, const cv::Size &frame)
{
    const int grow = static_cast<int>(std::ceil(reach));
    const auto down = [](int value) { return std::max(0, value) / regionGrid * regionGrid; };
    const auto up = [](int value, int end) {
        return std::min(end, (value + regionGrid - 1) / regionGrid * regionGrid);
    };
    const cv::Point first(down(box.x - grow), down(box.y - grow));
    const cv::Point end(up(box.x + box.width + grow, frame.width),
                        up(box.y + box.height + grow, frame.height));
    return {first, end};
}

ContourField::CutSides cutSides(const cv::Rect &box, const cv::Size &frame)
{
    ContourField::CutSides cut;
    cut.left = box.x <= 0;
    cut.top = box.y <= 0;
    cut.right = box.x + box.width >= frame.width;
    cut.bottom = box.y + box.height >= frame.height;
    return cut;
}

double contourSmoothing(double scale)
{
    return std::min(4.0, std::max(1.2, 2 * scale));
}

cv::Mat withSettings(const cv::Mat &matte, const MatteSettings &settings, double scale)
{
    const double shift = settings.shiftPx * scale;
    const double sigma = settings.featherPx * scale / sigmasFrom10To90;
    const cv::Rect box = boxOf(matte);
    if (box.empty() || (shift == 0 && sigma <= 0))
        return matte;
    const double reach = std::max(0.0, shift) + blurReach(sigma) + 2;
    const cv::Rect region = regionAround(box, reach, matte.size());
    cv::Mat part = matte(region);
    if (shift != 0)
        part = shifted(part, shift, scale, cutSides(box, matte.size()));
    if (sigma > 0)
        part = feathered(part, sigma);
    cv::Mat result = cv::Mat::zeros(matte.size(), CV_8U);
    part.copyTo(result(region));
    return result;
}

void decontaminate(cv::Mat &object, double strength, double scale)
{
    cv::Mat solid(object.size(), CV_8UC4);
    forEachRow(object.rows, [&](int y) {
        const Rgba *from = object.ptr<Rgba>(y);
        Rgba *to = solid.ptr<Rgba>(y);
        for (int x = 0; x < object.cols; ++x)
            to[x] = from[x][3] >= solidAlpha ? from[x] : Rgba();
    });
    const int width = 2 * static_cast<int>(std::ceil(colourReach * scale)) + 3;
    cv::Mat sums;
    cv::boxFilter(solid, sums, CV_32F, {width, width}, {-1, -1}, false, cv::BORDER_REPLICATE);
    forEachRow(object.rows, [&](int y) {
        Rgba *row = object.ptr<Rgba>(y);
        const cv::Vec4f *sum = sums.ptr<cv::Vec4f>(y);
        for (int x = 0; x < object.cols; ++x) {
            const int alpha = row[x][3];
            if (alpha == 0 || alpha >= solidAlpha || sum[x][3] < 1)
                continue;
            const float background = clamped(2 - static_cast<float>(alpha) / 127.5F);
            const float change = static_cast<float>(strength) * background;
            for (int c = 0; c < 3; ++c) {
                const float wanted = sum[x][c] / sum[x][3] * 255;
                const float own = row[x][c];
                row[x][c] = toByte(own + (wanted - own) * change);
            }
        }
    });
}

} // namespace zk::effects
