#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "Shadow_p.h"

#include <algorithm>

namespace zk::effects {

namespace {

ShadowCast castOf(const StickerLayer &layer, double scale)
{
    return {0, static_cast<int>(std::lround(layer.shadowOffset * scale)), layer.shadowBlur * scale};
}

} // namespace

double contourReachOf(const StickerLayer &layer, double scale)
{
    return layer.width * scale + blurReach(layer.roundness * scale) + 2;
}

double reachOf(const StickerLayer &layer, double scale, double)
{
    return contourReachOf(layer, scale) + castOf(layer, scale).reach();
}

void paint(const StickerLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    const cv::Mat distance = scene.contour->roundedDistance(scene.px(layer.roundness));
    const cv::Mat &sharp = scene.contour->distance();
    const float width = static_cast<float>(scene.px(layer.width));
    // Rounding may cut spikes of the object; paper is left around them all the same.
    const float least = width * 0.4F;
    cv::Mat paper(canvas.size(), CV_8U);
    forEachRow(canvas.rows, [&](int y) {
        for (int x = 0; x < paper.cols; ++x) {
            const float rounded = width - distance.at<float>(y, x);
            const float kept = least - sharp.at<float>(y, x);
            paper.at<uchar>(y, x) = toByte(255 * clamped(std::max(rounded, kept) + 0.5F));
        }
    });
    paintShadow(
        paper, castOf(layer, scene.scale), toRgba(layer.shadow, layer.shadowOpacity), canvas);
    const Rgba colour = toRgba(layer.colour);
    shade(canvas, [&](int x, int y) {
        return covered(colour, static_cast<float>(paper.at<uchar>(y, x)) / 255);
    });
}

} // namespace zk::effects
