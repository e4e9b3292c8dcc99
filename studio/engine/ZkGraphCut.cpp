#include "ZkGraphCut.h"

#include "ZkGridMaxFlow.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::engine {

namespace {

constexpr double unitsPerLogit = 256.0; // flow is counted in integers: exact, hence deterministic
constexpr int tableSize = 1024;
const cv::Point links[] = {{1, 0}, {0, 1}, {1, 1}, {-1, 1}};

int squaredDifference(const cv::Vec3b &a, const cv::Vec3b &b)
{
    const int l = a[0] - b[0];
    const int u = a[1] - b[1];
    const int v = a[2] - b[2];
    return l * l + u * u + v * v;
}

// Mean squared difference of horizontal neighbours: what counts as contrast in this picture.
double typicalDifference(const cv::Mat &lab)
{
    double sum = 0.0;
    for (int y = 0; y < lab.rows; ++y) {
        const cv::Vec3b *row = lab.ptr<cv::Vec3b>(y);
        int rowSum = 0;
        for (int x = 1; x < lab.cols; ++x)
            rowSum += squaredDifference(row[x - 1], row[x]);
        sum += rowSum;
    }
    return std::max(1.0, sum / std::max(1, lab.rows * (lab.cols - 1)));
}

// Prices by squared difference, a table because there are four of them per pixel.
class Prices
{
public:
    Prices(const cv::Mat &lab, const GraphCutOptions &options)
    {
        const double typical = typicalDifference(lab);
        m_step = std::max(1.0, typical * 8.0 / tableSize);
        for (int i = 0; i < tableSize; ++i) {
            const double price = std::exp(-options.contrast * i * m_step / (2.0 * typical));
            const double units = options.smoothness * price * unitsPerLogit;
            m_straight[i] = cvRound(units);
            m_diagonal[i] = cvRound(units / std::sqrt(2.0));
        }
    }
    int between(const cv::Vec3b &a, const cv::Vec3b &b, bool diagonal) const
    {
        const int i = std::min(int(squaredDifference(a, b) / m_step), tableSize - 1);
        return diagonal ? m_diagonal[i] : m_straight[i];
    }

private:
    double m_step;
    std::array<int, tableSize> m_straight {};
    std::array<int, tableSize> m_diagonal {};
};

void addPixel(GridMaxFlow &flow, const cv::Mat &lab, const Prices &prices, const cv::Point &at)
{
    const cv::Rect area({0, 0}, lab.size());
    for (int direction = 0; direction < 4; ++direction) {
        const cv::Point other = at + links[direction];
        if (!area.contains(other))
            continue;
        const int price =
            prices.between(lab.at<cv::Vec3b>(at), lab.at<cv::Vec3b>(other), direction > 1);
        flow.setLink(at.x, at.y, direction, price);
    }
}

} // namespace

cv::Mat cutGraph(const cv::Mat &logits, const cv::Mat &lab, const GraphCutOptions &options)
{
    const Prices prices(lab, options);
    GridMaxFlow flow(logits.size());
    for (int y = 0; y < logits.rows; ++y) {
        for (int x = 0; x < logits.cols; ++x) {
            const float logit = std::clamp(logits.at<float>(y, x), -certainLogit, certainLogit);
            flow.setTerminal(x, y, cvRound(logit * unitsPerLogit));
            addPixel(flow, lab, prices, {x, y});
        }
    }
    flow.solve();
    cv::Mat matte(logits.size(), CV_8U);
    for (int y = 0; y < matte.rows; ++y) {
        uchar *row = matte.ptr(y);
        for (int x = 0; x < matte.cols; ++x)
            row[x] = flow.isSource(x, y) ? 255 : 0;
    }
    return matte;
}

} // namespace zk::engine
