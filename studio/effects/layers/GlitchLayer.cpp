#include "../LayerRenderers_p.h"
#include "../Pixels_p.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::effects {

namespace {

constexpr double shiftSpread = 1.3; // the widest channel shift, in shifts

float unitRandom(quint32 a, quint32 b)
{
    return randomOf(a, b) / 2 + 0.5F;
}

// How far each row of the frame moves to the right. Slices are counted from the top of the frame, so
// that they stay where they are while the object moves through them.
std::vector<int> rowMoves(const GlitchLayer &layer, const Scene &scene, quint32 seed)
{
    const int rows = scene.region.y + scene.region.height;
    std::vector<int> moves(static_cast<std::size_t>(rows), 0);
    const double average = std::max(1.0, scene.px(layer.sliceHeight));
    int top = 0;
    for (quint32 slice = 0; top < rows; ++slice) {
        const double height = average * (0.35 + 1.3 * unitRandom(3 * slice, seed));
        const int bottom = std::min(rows, top + std::max(1, static_cast<int>(height)));
        const bool isTorn = unitRandom(3 * slice + 1, seed) < static_cast<float>(layer.chance);
        const int move = isTorn ? scene.wholePx(layer.jitter * randomOf(3 * slice + 2, seed)) : 0;
        std::fill(moves.begin() + top, moves.begin() + bottom, move);
        top = bottom;
    }
    return moves;
}

int channelShift(const GlitchLayer &layer, const Scene &scene, quint32 seed)
{
    const float size = 0.55F + static_cast<float>(shiftSpread - 0.55) * unitRandom(77, seed);
    const float side = randomOf(78, seed) < 0 ? -1 : 1;
    return scene.wholePx(layer.shift * size * side);
}

// Each channel comes with the alpha of the place that it comes from.
Rgba splitPixel(const Rgba *row, int width, int x, int shift)
{
    const int from[3] = {x - shift, x, x + shift};
    Rgba result;
    int values[3] = {0, 0, 0};
    for (int c = 0; c < 3; ++c) {
        if (from[c] < 0 || from[c] >= width)
            continue;
        const Rgba &source = row[from[c]];
        values[c] = source[c] * source[3];
        result[3] = std::max(result[3], source[3]);
    }
    for (int c = 0; c < 3 && result[3]; ++c)
        result[c] = static_cast<uchar>((values[c] + result[3] / 2) / result[3]);
    return result;
}

void darken(Rgba &pixel, int factor)
{
    for (int c = 0; c < 3; ++c)
        pixel[c] = multiplied(pixel[c], factor);
}

} // namespace

double reachOf(const GlitchLayer &layer, double scale, double)
{
    return (layer.jitter + layer.shift * shiftSpread) * scale + 2;
}

void treat(const GlitchLayer &layer, const Scene &scene, cv::Mat &object)
{
    const quint32 seed = hashed(scene.tick(layer.rate), 0x51u);
    const std::vector<int> moves = rowMoves(layer, scene, seed);
    const int shift = channelShift(layer, scene, seed);
    const int line = std::max(1, scene.wholePx(3));
    const int scanline = static_cast<int>(std::lround(255 * (1 - layer.scanlines)));
    const cv::Mat source = object.clone();
    forEachRow(object.rows, [&](int y) {
        const int frameY = y + scene.region.y;
        const int move = moves[static_cast<std::size_t>(frameY)];
        const bool isDark = (frameY / line) % 2 == 1;
        Rgba *row = object.ptr<Rgba>(y);
        for (int x = 0; x < object.cols; ++x) {
            row[x] = splitPixel(source.ptr<Rgba>(y), object.cols, x - move, shift);
            if (isDark)
                darken(row[x], scanline);
        }
    });
}

} // namespace zk::effects
