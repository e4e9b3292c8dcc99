#include "ZkModelView.h"

#include "../ZkMaskTools.h"
#include "../ZkMatteRefiner.h"
#include "ZkOnnxModel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

constexpr double mostPixels = 854 * 480;
constexpr int multiple = 32; // what networks halve five times

int roundedUp(int length)
{
    return (length + multiple - 1) / multiple * multiple;
}

cv::Size scaled(const cv::Size &size, double factor)
{
    constexpr double rounding = 1e-6; // what fits exactly is not to lose a pixel to it
    return {std::max(1, int(size.width * factor + rounding)),
            std::max(1, int(size.height * factor + rounding))};
}

cv::Mat shrunk(const cv::Mat &picture, const cv::Size &size)
{
    if (picture.size() == size)
        return picture;
    cv::Mat result;
    cv::resize(picture, result, size, 0, 0, cv::INTER_AREA);
    return result;
}

} // namespace

ModelView::ModelView(const OnnxModel &model, const cv::Size &frame)
    : m_whole(model.fixedSize())
{
    const bool isFixed = !m_whole.empty();
    const double factor = isFixed
        ? std::min(double(m_whole.width) / frame.width, double(m_whole.height) / frame.height)
        : std::sqrt(mostPixels / (double(frame.width) * frame.height));
    m_shrunk = factor < 1.0 ? scaled(frame, factor) : frame;
    if (!isFixed)
        m_whole = {roundedUp(m_shrunk.width), roundedUp(m_shrunk.height)};
}

cv::Mat ModelView::padded(const cv::Mat &picture, int border) const
{
    cv::Mat result;
    cv::copyMakeBorder(picture,
                       result,
                       0,
                       m_whole.height - m_shrunk.height,
                       0,
                       m_whole.width - m_shrunk.width,
                       border,
                       cv::Scalar::all(0));
    return result;
}

cv::Mat ModelView::picture(const cv::Mat &frame) const
{
    cv::Mat colors = shrunk(frame, m_shrunk);
    if (colors.channels() == 4)
        cv::cvtColor(colors, colors, cv::COLOR_RGBA2RGB);
    return padded(asShare(colors), cv::BORDER_REPLICATE);
}

cv::Mat ModelView::mask(const cv::Mat &mask) const
{
    if (mask.empty())
        return cv::Mat::zeros(m_whole, CV_32F);
    cv::Mat share = shrunk(asShare(mask > 0), m_shrunk);
    return padded(asShare(share > 0), cv::BORDER_CONSTANT);
}

cv::Mat ModelView::matte(const cv::Mat &matte) const
{
    if (matte.empty())
        return cv::Mat::zeros(m_whole, CV_32F);
    return padded(asShare(shrunk(matte, m_shrunk)), cv::BORDER_CONSTANT);
}

cv::Mat ModelView::framePart(const cv::Mat &result) const
{
    return result(cv::Rect({0, 0}, m_shrunk));
}

cv::Mat ModelView::matteOf(const cv::Mat &frame, const cv::Mat &result) const
{
    const cv::Mat coarse = framePart(result);
    if (coarse.size() != frame.size())
        return refineMatte(frame, coarse.clone());
    cv::Mat matte;
    coarse.convertTo(matte, CV_8U, 255.0);
    return matte;
}

} // namespace zk::engine
