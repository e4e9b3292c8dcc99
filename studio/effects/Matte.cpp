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
cv::Mat shifted(const cv::Mat &matte, double shift, double scale)
{
    const double reach = std::abs(shift) + shiftedSoftness * scale;
    const ContourField contour(matte, reach, contourSmoothing(scale));
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

// Sums of the colours of solid pixels, over blocks and then over the blocks around: what an object
// looks like near its edge changes slowly, so full resolution would be wasted.
class SolidColours
{
public:
    SolidColours(const cv::Mat &object, double scale)
        : m_sums((object.rows + regionGrid - 1) / regionGrid,
                 (object.cols + regionGrid - 1) / regionGrid,
                 CV_32FC4)
    {
        forEachRow(m_sums.rows, [&](int blockY) {
            for (int blockX = 0; blockX < m_sums.cols; ++blockX)
                m_sums.at<cv::Vec4f>(blockY, blockX) = sumOfBlock(object, blockX, blockY);
        });
        const int width = 2 * static_cast<int>(std::ceil(colourReach * scale / regionGrid)) + 1;
        cv::boxFilter(m_sums, m_sums, -1, {width, width}, {-1, -1}, false, cv::BORDER_CONSTANT);
    }

    // R, G and B summed, and the number of pixels.
    cv::Vec4f around(int x, int y) const
    {
        const float column = (static_cast<float>(x) + 0.5F) / regionGrid - 0.5F;
        const float row = (static_cast<float>(y) + 0.5F) / regionGrid - 0.5F;
        const int left = static_cast<int>(std::floor(column));
        const int top = static_cast<int>(std::floor(row));
        const float u = column - static_cast<float>(left);
        const float v = row - static_cast<float>(top);
        return (at(left, top) * (1 - u) + at(left + 1, top) * u) * (1 - v)
            + (at(left, top + 1) * (1 - u) + at(left + 1, top + 1) * u) * v;
    }

private:
    static cv::Vec4f sumOfBlock(const cv::Mat &object, int blockX, int blockY)
    {
        cv::Vec4i sum;
        const int bottom = std::min(object.rows, (blockY + 1) * regionGrid);
        const int right = std::min(object.cols, (blockX + 1) * regionGrid);
        for (int y = blockY * regionGrid; y < bottom; ++y) {
            const Rgba *row = object.ptr<Rgba>(y);
            for (int x = blockX * regionGrid; x < right; ++x) {
                if (row[x][3] >= solidAlpha)
                    sum += cv::Vec4i(row[x][0], row[x][1], row[x][2], 1);
            }
        }
        return sum;
    }
    cv::Vec4f at(int x, int y) const
    {
        return m_sums.at<cv::Vec4f>(std::min(std::max(y, 0), m_sums.rows - 1),
                                    std::min(std::max(x, 0), m_sums.cols - 1));
    }

    cv::Mat m_sums;
};

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
        part = shifted(part, shift, scale);
    if (sigma > 0)
        part = feathered(part, sigma);
    cv::Mat result = cv::Mat::zeros(matte.size(), CV_8U);
    part.copyTo(result(region));
    return result;
}

void decontaminate(cv::Mat &object, double strength, double scale)
{
    const SolidColours solid(object, scale);
    forEachRow(object.rows, [&](int y) {
        Rgba *row = object.ptr<Rgba>(y);
        for (int x = 0; x < object.cols; ++x) {
            const int alpha = row[x][3];
            if (alpha == 0 || alpha >= solidAlpha)
                continue;
            const cv::Vec4f around = solid.around(x, y);
            if (around[3] < 1)
                continue;
            const float background = clamped(2 - static_cast<float>(alpha) / 127.5F);
            const float change = static_cast<float>(strength) * background;
            for (int c = 0; c < 3; ++c) {
                const float own = row[x][c];
                row[x][c] = toByte(own + (around[c] / around[3] - own) * change);
            }
        }
    });
}

} // namespace zk::effects
