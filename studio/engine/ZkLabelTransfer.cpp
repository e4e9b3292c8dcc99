#include "ZkLabelTransfer.h"

#include "ZkVectorised.h"

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

// Sums over one row of the area; every entry is one pixel.
struct RowSums
{
    float *weight;
    float *object;
};

// The eight descriptor rows of both frames start at the pixels that are compared with one another.
ZKENGINE_VECTORISED
void compareRow(const uchar *const *later,
                const uchar *const *earlier,
                const float *labels,
                int count,
                float scale,
                RowSums sums)
{
    static_assert(Descriptors::channels == 8, "the sum below is written out");
    for (int x = 0; x < count; ++x) {
        int difference = 0;
        for (int k = 0; k < Descriptors::channels; ++k) {
            const int d = int(later[k][x]) - int(earlier[k][x]);
            difference += d < 0 ? -d : d;
        }
        // A cheap bell: its tail keeps a pixel without any likeness undecided rather than undefined.
        const float near = 1.0f / (1.0f + scale * float(difference * difference));
        const float weight = near * near * near * near;
        sums.weight[x] += weight;
        sums.object[x] += weight * labels[x];
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

class Transfer
{
public:
    Transfer(const Descriptors &earlier,
             const cv::Mat &matte,
             const Descriptors &later,
             const cv::Rect &area,
             const cv::Point &shift,
             const LabelTransferOptions &options)
        : m_earlier(earlier)
        , m_matte(matte)
        , m_later(later)
        , m_area(area)
        , m_shift(shift)
        , m_options(options)
        , m_scale(float(1.0 / (options.tolerance * options.tolerance)))
    { }

    void runRow(int row, float *out) const
    {
        std::vector<float> weight(m_area.width, 1e-6f);
        std::vector<float> object(m_area.width, 0.5e-6f);
        const int radius = m_options.radius;
        for (int dy = -radius; dy <= radius; dy += m_options.step) {
            const int y = m_area.y + row;
            const int from = y + m_shift.y + dy;
            if (from < 0 || from >= m_matte.rows)
                continue;
            for (int dx = -radius; dx <= radius; dx += m_options.step)
                compare(y, from, m_shift.x + dx, weight.data(), object.data());
        }
        for (int x = 0; x < m_area.width; ++x)
            out[x] = object[x] / weight[x];
    }

private:
    // Compares the row y of the later frame with the row from of the earlier one, dx to the right.
    void compare(int y, int from, int dx, float *weight, float *object) const
    {
        const int first = std::max(m_area.x, -dx);
        const int last = std::min(m_area.x + m_area.width, m_matte.cols - dx);
        if (first >= last)
            return;
        const uchar *later[Descriptors::channels];
        const uchar *earlier[Descriptors::channels];
        for (int k = 0; k < Descriptors::channels; ++k) {
            later[k] = m_later.planes[k].ptr(y) + first;
            earlier[k] = m_earlier.planes[k].ptr(from) + first + dx;
        }
        const RowSums sums {weight + first - m_area.x, object + first - m_area.x};
        const float *labels = m_matte.ptr<float>(from) + first + dx;
        compareRow(later, earlier, labels, last - first, m_scale, sums);
    }

    const Descriptors &m_earlier;
    const cv::Mat &m_matte;
    const Descriptors &m_later;
    cv::Rect m_area;
    cv::Point m_shift;
    LabelTransferOptions m_options;
    float m_scale;
};

} // namespace

cv::Mat transferLabels(const Descriptors &earlier,
                       const cv::Mat &matte,
                       const Descriptors &later,
                       const cv::Rect &area,
                       const cv::Point &shift,
                       const LabelTransferOptions &options)
{
    cv::Mat result(area.size(), CV_32F);
    const Transfer transfer(earlier, matte, later, area, shift, options);
    cv::parallel_for_(cv::Range(0, area.height), [&](const cv::Range &rows) {
        for (int row = rows.start; row < rows.end; ++row)
            transfer.runRow(row, result.ptr<float>(row));
    });
    return result;
}

} // namespace zk::engine
