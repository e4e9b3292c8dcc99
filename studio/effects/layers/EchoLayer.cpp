#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "ColourMatrix_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::effects {

namespace {

// Resampling mixes neighbours; with premultiplied colours the empty ones weigh nothing.
cv::Mat premultiplied(const cv::Mat &picture)
{
    cv::Mat result(picture.size(), CV_8UC4);
    forEachRow(picture.rows, [&](int y) {
        const Rgba *from = picture.ptr<Rgba>(y);
        Rgba *to = result.ptr<Rgba>(y);
        for (int x = 0; x < picture.cols; ++x) {
            for (int c = 0; c < 3; ++c)
                to[x][c] = multiplied(from[x][c], from[x][3]);
            to[x][3] = from[x][3];
        }
    });
    return result;
}

Rgba straight(const Rgba &pixel, float opacity)
{
    Rgba result;
    const int alpha = pixel[3];
    for (int c = 0; c < 3; ++c)
        result[c] = static_cast<uchar>(std::min(255, (pixel[c] * 255 + alpha / 2) / alpha));
    result[3] = toByte(static_cast<float>(alpha) * opacity);
    return result;
}

// Whole pixels suffice for copies that only move, and cost a tenth of resampling.
cv::Mat moved(const cv::Mat &object, int dx, int dy)
{
    cv::Mat result = cv::Mat::zeros(object.size(), object.type());
    const cv::Rect whole({}, object.size());
    const cv::Rect to = whole & (whole + cv::Point(dx, dy));
    if (!to.empty())
        object(to - cv::Point(dx, dy)).copyTo(result(to));
    return result;
}

// The object moved and scaled about its middle as the copy of that number.
cv::Mat copyOf(const cv::Mat &object, const EchoLayer &layer, const Scene &scene, int number)
{
    const double swing = layer.sway > 0 ? std::cos(CV_2PI * layer.sway * scene.time) : 1;
    const double dx = scene.px(layer.dx) * number * swing;
    const double dy = scene.px(layer.dy) * number * swing;
    if (layer.scale == 1)
        return moved(object, static_cast<int>(std::lround(dx)), static_cast<int>(std::lround(dy)));
    const double scale = std::pow(layer.scale, number);
    const double middleX = scene.box.x + scene.box.width / 2.0;
    const double middleY = scene.box.y + scene.box.height / 2.0;
    const cv::Matx23d move(
        scale, 0, middleX * (1 - scale) + dx, 0, scale, middleY * (1 - scale) + dy);
    cv::Mat copy;
    cv::warpAffine(object, copy, move, object.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT);
    return copy;
}

} // namespace

double reachOf(const EchoLayer &layer, double scale, double boxSize)
{
    const double farthest = std::max(std::abs(layer.dx), std::abs(layer.dy)) * scale * layer.count;
    const double grown = boxSize / 2 * (std::pow(std::max(1.0, layer.scale), layer.count) - 1);
    return farthest + grown + 2;
}

void paint(const EchoLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    cv::Mat tinted = scene.object.clone();
    ColourMatrix colours;
    colours.duotone(QColor(layer.tint).darker(300), layer.tint, layer.tintStrength);
    colours.apply(tinted);
    const cv::Mat object = premultiplied(tinted);
    for (int number = layer.count; number >= 1; --number) {
        const cv::Mat copy = copyOf(object, layer, scene, number);
        const float opacity = static_cast<float>(layer.opacity * std::pow(layer.fade, number - 1));
        shade(canvas, [&](int x, int y) {
            const Rgba &pixel = copy.at<Rgba>(y, x);
            return pixel[3] ? straight(pixel, opacity) : Rgba();
        });
    }
}

} // namespace zk::effects
