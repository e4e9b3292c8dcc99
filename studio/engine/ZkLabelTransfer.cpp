#include "ZkLabelTransfer.h"

#include "ZkVectorised.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zk::engine {

namespace {

// Sums over one row of the area; every entry is one pixel.
struct RowSums
{
    float *weight;
    float *object;
};

// The eight descriptor rows of both frames start at the pixels that are compared with one another. The
// sums are those of 16 bits so that many pixels fit into a register.
ZKENGINE_VECTORISED
void addDifferences(const uchar *later, const uchar *earlier, int count, std::uint16_t *sums)
{
    for (int x = 0; x < count; ++x) {
        const uchar a = later[x], b = earlier[x];
        const uchar difference = uchar((a > b ? a : b) - (a > b ? b : a));
        sums[x] = std::uint16_t(sums[x] + difference);
    }
}

ZKENGINE_VECTORISED
void addVotes(const std::uint16_t *sums, const float *labels, int count, float scale, RowSums row)
{
    for (int x = 0; x < count; ++x) {
        // A cheap bell: its tail keeps a pixel without any likeness undecided rather than undefined.
        const float difference = float(sums[x]);
        const float near = 1.0f / (1.0f + scale * difference * difference);
        const float weight = near * near * near * near;
        row.weight[x] += weight;
        row.object[x] += weight * labels[x];
    }
}

} // namespace

Descriptors describe(const FrameFeatures &features)
{
    constexpr int chosen[] = {Feature::fine,
                              Feature::fine + 1,
                              Feature::fine + 2,
                              Feature::middle,
                              Feature::middle + 1,
                              Feature::middle + 2,
                              Feature::deviation,
                              Feature::gradient + 1};
    Descriptors result;
    for (int k = 0; k < Descriptors::channels; ++k)
        result.planes[k] = features.plane(chosen[k]);
    return result;
}

namespace {

// One of grid x grid of the pixels.
template<typename Pixel>
cv::Mat_<Pixel>
thinned(const cv::Mat &plane, const cv::Point &first, const cv::Size &size, int grid)
{
    cv::Mat_<Pixel> result(size);
    for (int y = 0; y < size.height; ++y) {
        const Pixel *from = plane.ptr<Pixel>(first.y + y * grid) + first.x;
        Pixel *to = result[y];
        for (int x = 0; x < size.width; ++x)
            to[x] = from[x * grid];
    }
    return result;
}

// The thinned pixels of a frame.
struct Thinned
{
    Thinned(const Descriptors &descriptors, const cv::Point &first, const cv::Size &size, int grid)
    {
        for (int k = 0; k < Descriptors::channels; ++k)
            planes[k] = thinned<uchar>(descriptors.planes[k], first, size, grid);
    }

    cv::Mat planes[Descriptors::channels];
};

int thinnedCount(int length, int grid)
{
    return (length + grid - 1) / grid;
}

// The value of each pixel from the thinned ones around it. cv::resize() would take them for the middles
// of 2 x 2 pixels.
cv::Mat spread(const cv::Mat &coarse, const cv::Size &size, int grid)
{
    cv::Mat map(size, CV_32FC2), result;
    for (int y = 0; y < size.height; ++y) {
        cv::Vec2f *row = map.ptr<cv::Vec2f>(y);
        for (int x = 0; x < size.width; ++x)
            row[x] = {float(x) / grid, float(y) / grid};
    }
    cv::remap(coarse, result, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return result;
}

// All coordinates are those of the thinned pixels.
class Transfer
{
public:
    // shift: from a later pixel to the earlier one in the middle of its search.
    Transfer(const Thinned &earlier,
             const cv::Mat &matte,
             const Thinned &later,
             const cv::Point &shift,
             const LabelTransferOptions &options)
        : m_earlier(earlier)
        , m_matte(matte)
        , m_later(later)
        , m_shift(shift)
        , m_radius(options.radius / options.grid)
        , m_step(std::max(1, options.step / options.grid))
        , m_scale(float(1.0 / (options.tolerance * options.tolerance)))
    { }

    void runRow(int y, float *out) const
    {
        const int width = m_later.planes[0].cols;
        std::vector<float> weight(width, 1e-6f);
        std::vector<float> object(width, 0.5e-6f);
        std::vector<std::uint16_t> sums(width);
        for (int dy = -m_radius; dy <= m_radius; dy += m_step) {
            const int from = y + m_shift.y + dy;
            if (from < 0 || from >= m_matte.rows)
                continue;
            for (int dx = -m_radius; dx <= m_radius; dx += m_step)
                compare(y, from, m_shift.x + dx, sums, {weight.data(), object.data()});
        }
        for (int x = 0; x < width; ++x)
            out[x] = object[x] / weight[x];
    }

private:
    // Compares the row y of the later frame with the row from of the earlier one, dx to the right.
    void compare(int y, int from, int dx, std::vector<std::uint16_t> &sums, RowSums row) const
    {
        const int first = std::max(0, -dx);
        const int last = std::min(m_later.planes[0].cols, m_matte.cols - dx);
        if (first >= last)
            return;
        const int count = last - first;
        std::fill_n(sums.begin(), count, std::uint16_t(0));
        for (int k = 0; k < Descriptors::channels; ++k) {
            addDifferences(m_later.planes[k].ptr(y) + first,
                           m_earlier.planes[k].ptr(from) + first + dx,
                           count,
                           sums.data());
        }
        const float *labels = m_matte.ptr<float>(from) + first + dx;
        addVotes(sums.data(), labels, count, m_scale, {row.weight + first, row.object + first});
    }

    const Thinned &m_earlier;
    const cv::Mat &m_matte;
    const Thinned &m_later;
    cv::Point m_shift;
    int m_radius;
    int m_step;
    float m_scale;
};

int parity(int value, int grid)
{
    return ((value % grid) + grid) % grid;
}

} // namespace

cv::Mat transferLabels(const Descriptors &earlier,
                       const cv::Mat &matte,
                       const Descriptors &later,
                       const cv::Rect &area,
                       const cv::Point &shift,
                       const LabelTransferOptions &options)
{
    // The earlier pixels are thinned so that the middle of each search is one of them.
    const int grid = options.grid;
    const cv::Point middle = area.tl() + shift;
    cv::Point first(parity(middle.x, grid), parity(middle.y, grid));
    first = {std::min(first.x, matte.cols - 1), std::min(first.y, matte.rows - 1)};
    const cv::Size size(thinnedCount(matte.cols - first.x, grid),
                        thinnedCount(matte.rows - first.y, grid));
    const cv::Point corner((middle.x - first.x) / grid, (middle.y - first.y) / grid);
    const Thinned from(earlier, first, size, grid);
    const Thinned to(
        later, area.tl(), {thinnedCount(area.width, grid), thinnedCount(area.height, grid)}, grid);
    const cv::Mat labels = thinned<float>(matte, first, size, grid);
    const Transfer transfer(from, labels, to, corner, options);
    cv::Mat coarse(to.planes[0].size(), CV_32F);
    cv::parallel_for_(cv::Range(0, coarse.rows), [&](const cv::Range &rows) {
        for (int row = rows.start; row < rows.end; ++row)
            transfer.runRow(row, coarse.ptr<float>(row));
    });
    return grid == 1 ? coarse : spread(coarse, area.size(), grid);
}

} // namespace zk::engine
