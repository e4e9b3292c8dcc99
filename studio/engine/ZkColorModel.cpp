#include "ZkColorModel.h"

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

// 16 levels of lightness, and 32 of a and b each, because real pictures use the middle of these only.
constexpr int lightBits = 4;
constexpr int colorBits = 5;
constexpr int colorBins = 1 << colorBits;
constexpr int strideA = colorBins;
constexpr int strideL = colorBins * colorBins;
constexpr int binCount = strideL << lightBits;

int binOf(const cv::Vec3b &lab)
{
    return (lab[0] >> (8 - lightBits)) * strideL + (lab[1] >> (8 - colorBits)) * strideA
        + (lab[2] >> (8 - colorBits));
}

void smoothAlong(std::vector<float> &bins, int stride, int length)
{
    std::vector<float> line(static_cast<std::size_t>(length));
    for (int start = 0; start < binCount; ++start) {
        if (start / stride % length != 0)
            continue;
        for (int i = 0; i < length; ++i)
            line[i] = bins[start + i * stride];
        for (int i = 0; i < length; ++i) {
            const float before = line[std::max(i - 1, 0)];
            const float after = line[std::min(i + 1, length - 1)];
            bins[start + i * stride] = 0.25f * before + 0.5f * line[i] + 0.25f * after;
        }
    }
}

std::vector<float> histogram(const cv::Mat &lab, const cv::Mat &weights, int smoothing)
{
    std::vector<float> bins(binCount, 0.0f);
    double sum = 0.0;
    for (int y = 0; y < lab.rows; ++y) {
        const cv::Vec3b *color = lab.ptr<cv::Vec3b>(y);
        const uchar *weight = weights.ptr(y);
        for (int x = 0; x < lab.cols; ++x) {
            if (weight[x] == 0)
                continue;
            bins[binOf(color[x])] += weight[x];
            sum += weight[x];
        }
    }
    for (float &bin : bins)
        bin = sum > 0.0 ? float(bin / sum) : 0.0f;
    for (int round = 0; round < smoothing; ++round) {
        smoothAlong(bins, 1, colorBins);
        smoothAlong(bins, strideA, colorBins);
        smoothAlong(bins, strideL, 1 << lightBits);
    }
    return bins;
}

void mix(std::vector<float> &into, const std::vector<float> &other, float rate)
{
    for (std::size_t i = 0; i < into.size(); ++i)
        into[i] += rate * (other[i] - into[i]);
}

} // namespace

ColorModel::ColorModel(const ColorModelOptions &options)
    : m_options(options)
{ }

void ColorModel::learn(const cv::Mat &lab, const cv::Mat &object, const cv::Mat &background)
{
    m_object = histogram(lab, object, m_options.smoothing);
    m_background = histogram(lab, background, m_options.smoothing);
    rebuild();
}

void ColorModel::update(const cv::Mat &lab,
                        const cv::Mat &object,
                        const cv::Mat &background,
                        double rate)
{
    if (isEmpty()) {
        learn(lab, object, background);
        return;
    }
    mix(m_object, histogram(lab, object, m_options.smoothing), float(rate));
    mix(m_background, histogram(lab, background, m_options.smoothing), float(rate));
    rebuild();
}

void ColorModel::rebuild()
{
    const float prior = float(m_options.prior);
    const float limit = float(m_options.limit);
    m_logits.resize(binCount);
    for (std::size_t i = 0; i < m_logits.size(); ++i) {
        const float odds = std::log((m_object[i] + prior) / (m_background[i] + prior));
        m_logits[i] = std::clamp(odds, -limit, limit);
    }
}

cv::Mat ColorModel::logits(const cv::Mat &lab) const
{
    cv::Mat result(lab.size(), CV_32F);
    for (int y = 0; y < lab.rows; ++y) {
        const cv::Vec3b *color = lab.ptr<cv::Vec3b>(y);
        float *out = result.ptr<float>(y);
        for (int x = 0; x < lab.cols; ++x)
            out[x] = m_logits[binOf(color[x])];
    }
    return result;
}

} // namespace zk::engine
