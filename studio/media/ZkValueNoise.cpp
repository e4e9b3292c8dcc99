#include "ZkSampleScene.h"

#include <cmath>

namespace zk::media {

namespace {

quint32 scramble(quint32 value)
{
    value = (value ^ (value >> 16)) * 0x7feb352dU;
    value = (value ^ (value >> 15)) * 0x846ca68bU;
    return value ^ (value >> 16);
}

double lattice(int x, int y, quint32 seed)
{
    return scramble(quint32(x) * 73856093U ^ quint32(y) * 19349663U ^ seed * 83492791U)
        / 4294967295.0;
}

double mix(double from, double to, double share)
{
    const double smooth = share * share * (3 - 2 * share);
    return from + (to - from) * smooth;
}

double bumps(double x, double y, quint32 seed)
{
    const int left = int(std::floor(x));
    const int top = int(std::floor(y));
    const double above = mix(lattice(left, top, seed), lattice(left + 1, top, seed), x - left);
    const double below =
        mix(lattice(left, top + 1, seed), lattice(left + 1, top + 1, seed), x - left);
    return mix(above, below, y - top);
}

} // namespace

double valueNoise(double x, double y, int octaves, quint32 seed)
{
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * bumps(x, y, seed + quint32(i));
        total += weight;
        weight /= 2;
        x *= 2.03;
        y *= 2.03;
    }
    return sum / total;
}

double SampleScene::grain(int frame, int x, int y, int channel)
{
    // The sum of three even distributions is close enough to a bell curve.
    const auto seed = quint32(frame * 3 + channel);
    return (lattice(x, y, seed) + lattice(x, y, seed ^ 0x9e3779b9U) + lattice(y, x, seed + 77U))
        / 1.5
        - 1;
}

} // namespace zk::media
