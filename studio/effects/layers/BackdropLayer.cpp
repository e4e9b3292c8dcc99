#include "../LayerRenderers_p.h"
#include "ColourMatrix_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace zk::effects {

namespace {

// A wide blur has no detail to lose: it is done on a small copy.
cv::Mat defocused(const cv::Mat &frame, double sigma)
{
    const int shrink = std::max(1, static_cast<int>(sigma / 3));
    cv::Mat small;
    const cv::Size size(std::max(1, frame.cols / shrink), std::max(1, frame.rows / shrink));
    cv::resize(frame, small, size, 0, 0, cv::INTER_AREA);
    cv::GaussianBlur(small, small, {}, sigma / shrink, sigma / shrink, cv::BORDER_REPLICATE);
    cv::Mat result;
    cv::resize(small, result, frame.size(), 0, 0, cv::INTER_LINEAR);
    return result;
}

void fade(cv::Mat &picture, double opacity)
{
    const int factor = static_cast<int>(std::lround(opacity * 255));
    forEachRow(picture.rows, [&](int y) {
        Rgba *row = picture.ptr<Rgba>(y);
        for (int x = 0; x < picture.cols; ++x)
            row[x][3] = multiplied(row[x][3], factor);
    });
}

} // namespace

void paintBackdrop(const BackdropLayer &layer, const cv::Mat &frame, double scale, cv::Mat &canvas)
{
    const double sigma = layer.blur * scale / 2;
    cv::Mat picture = sigma > 0.3 ? defocused(frame, sigma) : frame.clone();
    ColourMatrix colours;
    colours.saturate(layer.saturation);
    colours.brighten(layer.brightness);
    colours.tint(layer.tint, layer.tintStrength);
    colours.apply(picture);
    if (layer.opacity < 1)
        fade(picture, layer.opacity);
    paintOver(canvas, picture);
}

} // namespace zk::effects
