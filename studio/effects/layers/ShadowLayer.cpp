#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "Shadow_p.h"

#include <algorithm>

namespace zk::effects {

namespace {

ShadowCast castOf(const ShadowLayer &layer, double scale)
{
    return {static_cast<int>(std::lround(layer.dx * scale)),
            static_cast<int>(std::lround(layer.dy * scale)),
            layer.blur * scale};
}

} // namespace

void paintShadow(const cv::Mat &shape, const ShadowCast &cast, const Rgba &colour, cv::Mat &canvas)
{
    const cv::Mat soft = blurred(shape, cast.sigma());
    const int right = soft.cols - 1;
    const int bottom = soft.rows - 1;
    shade(canvas, [&](int x, int y) {
        // Beyond the region there is either nothing, or the border of the frame that goes on.
        const int fromX = std::min(std::max(x - cast.dx, 0), right);
        const int fromY = std::min(std::max(y - cast.dy, 0), bottom);
        const ushort value = soft.at<ushort>(fromY, fromX);
        return value ? covered(colour, static_cast<float>(value) / 65535) : Rgba();
    });
}

double reachOf(const ShadowLayer &layer, double scale, double)
{
    return castOf(layer, scale).reach();
}

void paint(const ShadowLayer &layer, const Scene &scene, cv::Mat &canvas)
{
    paintShadow(
        scene.alpha, castOf(layer, scene.scale), toRgba(layer.colour, layer.opacity), canvas);
}

} // namespace zk::effects
