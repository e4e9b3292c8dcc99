#include "ZkMatteRefiner.h"

#include "ZkFrameFeatures.h"
#include "ZkMatte.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

cv::Mat boxMean(const cv::Mat &image, int radius)
{
    cv::Mat mean;
    const int side = 2 * radius + 1;
    cv::boxFilter(image, mean, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REFLECT);
    return mean;
}

// In every window the alpha is a linear function of the colour: alpha = factor . color + offset.
struct ColorLine
{
    cv::Mat factor; // CV_32FC3
    cv::Mat offset; // CV_32FC1
};

// Moments of the colours in each window, inverted: what does not depend on the matte.
cv::Matx33f inverseCovariance(const cv::Vec3f &mean,
                              const cv::Vec3f &squares,
                              const cv::Vec3f &mixed,
                              float epsilon)
{
    cv::Matx33f covariance(squares[0] - mean[0] * mean[0] + epsilon,
                           mixed[0] - mean[0] * mean[1],
                           mixed[1] - mean[0] * mean[2],
                           0,
                           squares[1] - mean[1] * mean[1] + epsilon,
                           mixed[2] - mean[1] * mean[2],
                           0,
                           0,
                           squares[2] - mean[2] * mean[2] + epsilon);
    covariance(1, 0) = covariance(0, 1);
    covariance(2, 0) = covariance(0, 2);
    covariance(2, 1) = covariance(1, 2);
    return covariance.inv();
}

cv::Mat mixedProducts(const cv::Mat &color)
{
    cv::Mat mixed(color.size(), CV_32FC3);
    for (int y = 0; y < color.rows; ++y) {
        const cv::Vec3f *from = color.ptr<cv::Vec3f>(y);
        cv::Vec3f *to = mixed.ptr<cv::Vec3f>(y);
        for (int x = 0; x < color.cols; ++x) {
            const cv::Vec3f &c = from[x];
            to[x] = {c[0] * c[1], c[0] * c[2], c[1] * c[2]};
        }
    }
    return mixed;
}

// Pixels whose window holds part of the outline; elsewhere alpha is constant.
cv::Mat nearOutline(const cv::Mat &alpha, int radius)
{
    const int side = 4 * radius + 3;
    const cv::Mat window = cv::getStructuringElement(cv::MORPH_RECT, {side, side});
    cv::Mat lowest, highest;
    cv::erode(alpha, lowest, window);
    cv::dilate(alpha, highest, window);
    return (highest - lowest) > 0.05f;
}

ColorLine fitLines(const cv::Mat &color,
                   const cv::Mat &alpha,
                   const cv::Mat &band,
                   const MatteRefinerOptions &options)
{
    cv::Mat alpha3;
    cv::merge(std::vector<cv::Mat> {alpha, alpha, alpha}, alpha3);
    const cv::Mat mean = boxMean(color, options.radius);
    const cv::Mat squares = boxMean(color.mul(color), options.radius);
    const cv::Mat mixed = boxMean(mixedProducts(color), options.radius);
    const cv::Mat meanAlpha = boxMean(alpha, options.radius);
    const cv::Mat meanProduct = boxMean(color.mul(alpha3), options.radius);
    ColorLine line {cv::Mat::zeros(color.size(), CV_32FC3), meanAlpha.clone()};
    for (int y = 0; y < color.rows; ++y) {
        for (int x = 0; x < color.cols; ++x) {
            if (band.at<uchar>(y, x) == 0)
                continue;
            const cv::Vec3f m = mean.at<cv::Vec3f>(y, x);
            const float a = meanAlpha.at<float>(y, x);
            const cv::Vec3f covariance = meanProduct.at<cv::Vec3f>(y, x) - a * m;
            const cv::Vec3f factor = inverseCovariance(m,
                                                       squares.at<cv::Vec3f>(y, x),
                                                       mixed.at<cv::Vec3f>(y, x),
                                                       float(options.epsilon))
                * covariance;
            line.factor.at<cv::Vec3f>(y, x) = factor;
            line.offset.at<float>(y, x) = a - factor.dot(m);
        }
    }
    return {boxMean(line.factor, options.radius), boxMean(line.offset, options.radius)};
}

// Where a full-size pixel lies on the coarse grid: index of the left neighbour and share of the right.
struct Sampling
{
    Sampling(int fullLength, int coarseLength)
        : index(fullLength)
        , share(fullLength)
    {
        for (int i = 0; i < fullLength; ++i) {
            const float at = std::clamp(
                (i + 0.5f) * coarseLength / fullLength - 0.5f, 0.0f, float(coarseLength - 1));
            index[i] = std::min(int(at), std::max(0, coarseLength - 2));
            share[i] = at - index[i];
        }
    }

    std::vector<int> index;
    std::vector<float> share;
};

// Evaluates the lines on the full-size picture, only where the outline is.
class Upsampler
{
public:
    Upsampler(const cv::Mat &frame, const ColorLine &line, const cv::Mat &band, double contrast)
        : m_frame(frame)
        , m_band(band)
        , m_columns(frame.cols, band.cols)
        , m_rows(frame.rows, band.rows)
        , m_contrast(float(contrast))
    {
        cv::Mat channels[] = {line.factor, line.offset};
        m_line.create(band.size(), CV_32FC4);
        const int order[] = {0, 0, 1, 1, 2, 2, 3, 3};
        cv::mixChannels(channels, 2, &m_line, 1, order, 4);
    }

    void runRow(int y, uchar *matte) const
    {
        const int top = m_rows.index[y];
        const int bottom = std::min(top + 1, m_band.rows - 1);
        const uchar *band = m_band.ptr(m_rows.share[y] < 0.5f ? top : bottom);
        std::vector<cv::Vec4f> line(m_band.cols);
        interpolate(top, bottom, m_rows.share[y], line);
        for (int x = 0; x < m_frame.cols; ++x) {
            const int left = m_columns.index[x];
            const int right = std::min(left + 1, m_band.cols - 1);
            if (band[m_columns.share[x] < 0.5f ? left : right] != 0)
                matte[x] = alphaAt(y, x, line[left], line[right]);
        }
    }

private:
    void interpolate(int top, int bottom, float share, std::vector<cv::Vec4f> &line) const
    {
        const cv::Vec4f *upper = m_line.ptr<cv::Vec4f>(top);
        const cv::Vec4f *lower = m_line.ptr<cv::Vec4f>(bottom);
        for (int x = 0; x < m_band.cols; ++x)
            line[x] = upper[x] + share * (lower[x] - upper[x]);
    }
    uchar alphaAt(int y, int x, const cv::Vec4f &left, const cv::Vec4f &right) const
    {
        const cv::Vec4f at = left + m_columns.share[x] * (right - left);
        const uchar *color = m_frame.ptr(y) + x * m_frame.channels();
        const float alpha =
            at[3] + (at[0] * color[0] + at[1] * color[1] + at[2] * color[2]) * (1.0f / 255.0f);
        return cv::saturate_cast<uchar>(255.0f * ((alpha - 0.5f) * m_contrast + 0.5f));
    }

    const cv::Mat &m_frame;
    const cv::Mat &m_band;
    cv::Mat m_line;
    Sampling m_columns;
    Sampling m_rows;
    float m_contrast;
};

cv::Mat asFloat(const cv::Mat &coarse)
{
    cv::Mat alpha;
    coarse.convertTo(alpha, CV_32F, coarse.type() == CV_8UC1 ? 1.0 / 255.0 : 1.0);
    return alpha;
}

} // namespace

cv::Mat refineMatte(const cv::Mat &frame, const cv::Mat &coarse, const MatteRefinerOptions &options)
{
    if (!isFrame(frame) || coarse.empty() || coarse.cols > frame.cols || coarse.rows > frame.rows)
        return {};
    if (coarse.type() != CV_8UC1 && coarse.type() != CV_32FC1)
        return {};
    const cv::Mat alpha = asFloat(coarse);
    cv::Mat matte;
    cv::resize(alpha >= 0.5f, matte, frame.size(), 0, 0, cv::INTER_NEAREST);
    const cv::Mat band = nearOutline(alpha, options.radius);
    if (cv::countNonZero(band) == 0)
        return matte;
    cv::Mat color;
    shrunkFrame(frame, alpha.size()).convertTo(color, CV_32F, 1.0 / 255.0);
    const Upsampler upsampler(frame, fitLines(color, alpha, band, options), band, options.contrast);
    cv::parallel_for_(cv::Range(0, frame.rows), [&](const cv::Range &rows) {
        for (int y = rows.start; y < rows.end; ++y)
            upsampler.runRow(y, matte.ptr(y));
    });
    return matte;
}

} // namespace zk::engine
