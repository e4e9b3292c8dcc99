#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"
#include "ColourMatrix_p.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::effects {

namespace {

// Fine texture would become specks of ink. From about 720 rows on it is taken out at half the size,
// where the same filter reaches twice as far.
cv::Mat flattened(const cv::Mat &object, double scale)
{
    cv::Mat flat;
    if (scale > 0.6 && object.cols > 3 && object.rows > 3) {
        cv::Mat half;
        cv::resize(object, half, {}, 0.5, 0.5, cv::INTER_AREA);
        cv::medianBlur(half, half, 5);
        cv::resize(half, flat, object.size(), 0, 0, cv::INTER_LINEAR);
    } else {
        cv::medianBlur(object, flat, 5); // never in place: object is the caller's
    }
    return flat;
}

// Brightness in steps with short ramps between them, which do not crawl as hard steps do.
std::array<float, 256> stepsOf(int levels)
{
    std::array<float, 256> factors {};
    for (int value = 0; value < 256; ++value) {
        const float along = static_cast<float>(value) / 255 * static_cast<float>(levels);
        const float step = std::min(std::floor(along), static_cast<float>(levels - 1));
        const float ramp = clamped((along - step - 0.9F) / 0.1F);
        const float stepped = (step + ramp + 0.5F) / static_cast<float>(levels);
        factors[static_cast<std::size_t>(value)] =
            std::min(3.0F, stepped * 255 / std::max(1.0F, static_cast<float>(value)));
    }
    return factors;
}

// Ink where it is darker than around: the difference of two blurs, 0..1.
cv::Mat inkOf(const cv::Mat &grey, double width)
{
    cv::Mat fine;
    cv::Mat coarse;
    cv::GaussianBlur(grey, fine, {}, std::max(0.5, width * 0.35));
    cv::GaussianBlur(grey, coarse, {}, std::max(0.8, width * 0.8));
    cv::Mat ink(grey.size(), CV_8U);
    forEachRow(grey.rows, [&](int y) {
        for (int x = 0; x < grey.cols; ++x) {
            const float around = coarse.at<uchar>(y, x);
            const float darker = around - static_cast<float>(fine.at<uchar>(y, x));
            ink.at<uchar>(y, x) = toByte(255 * clamped((darker - 5) / 7));
        }
    });
    return ink;
}

// A screen of dots at 45 degrees, fixed to the frame; the darker, the larger.
class Halftone
{
public:
    Halftone(const ComicLayer &layer, const Scene &scene)
        : m_size(static_cast<float>(scene.px(layer.dotSize)))
        , m_strength(layer.dotSize > 0 ? static_cast<float>(layer.dots) : 0)
        , m_origin(scene.region.tl())
    { }

    // What is left of the brightness.
    float factor(int x, int y, uchar brightness) const
    {
        const float dark = clamped((120 - static_cast<float>(brightness)) / 120);
        if (m_strength <= 0 || dark <= 0)
            return 1;
        const float turn = 0.70710678F / std::max(m_size, 2.0F);
        const float u = static_cast<float>(x + m_origin.x + y + m_origin.y) * turn;
        const float v = static_cast<float>(x + m_origin.x - y - m_origin.y) * turn;
        const float du = u - std::floor(u) - 0.5F;
        const float dv = v - std::floor(v) - 0.5F;
        const float radius = 0.62F * std::sqrt(dark);
        const float inDot =
            clamped((radius - std::sqrt(du * du + dv * dv)) * std::max(m_size, 2.0F) + 0.5F);
        return 1 - m_strength * inDot;
    }

private:
    float m_size;
    float m_strength;
    cv::Point m_origin;
};

void scaleColour(Rgba &pixel, float factor)
{
    for (int c = 0; c < 3; ++c)
        pixel[c] = toByte(static_cast<float>(pixel[c]) * factor);
}

} // namespace

void treat(const ComicLayer &layer, const Scene &scene, cv::Mat &object)
{
    cv::Mat flat = flattened(object, scene.scale);
    ColourMatrix colours;
    colours.saturate(layer.saturation);
    colours.apply(flat);
    cv::Mat grey;
    cv::cvtColor(flat, grey, cv::COLOR_RGBA2GRAY);
    const cv::Mat ink = inkOf(grey, scene.px(layer.inkWidth));
    const std::array<float, 256> steps = stepsOf(layer.levels);
    const Halftone dots(layer, scene);
    const Rgba inkColour = toRgba(layer.inkColour, layer.ink);
    forEachRow(object.rows, [&](int y) {
        for (int x = 0; x < object.cols; ++x) {
            Rgba &pixel = object.at<Rgba>(y, x);
            if (!pixel[3])
                continue;
            const uchar alpha = pixel[3];
            const uchar brightness = grey.at<uchar>(y, x);
            pixel = flat.at<Rgba>(y, x);
            pixel[3] = 255;
            scaleColour(pixel, steps[brightness] * dots.factor(x, y, brightness));
            blendOver(pixel, covered(inkColour, static_cast<float>(ink.at<uchar>(y, x)) / 255));
            pixel[3] = alpha;
        }
    });
}

} // namespace zk::effects
