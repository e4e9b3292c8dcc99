#include "ZkGeodesicDistance.h"

#include <cmath>
#include <cstdlib>

namespace zk::engine {

namespace {

constexpr float unreachable = 1e6f;

// One sweep relaxes every pixel from the four neighbours that the sweep has passed already. step is
// +1 for the sweep from the top left to the bottom right and -1 for the way back.
class Sweep
{
public:
    Sweep(const cv::Mat &lab, cv::Mat &distance, float edgeWeight, int step)
        : m_lab(lab)
        , m_distance(distance)
        , m_edgeWeight(edgeWeight)
        , m_step(step)
    { }

    void run()
    {
        for (int i = 0; i < m_lab.rows; ++i)
            runRow(m_step > 0 ? i : m_lab.rows - 1 - i);
    }

private:
    float cost(const cv::Vec3b &a, const cv::Vec3b &b, float length) const
    {
        const int difference =
            std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
        return length + m_edgeWeight * difference;
    }
    void relax(float &value, const cv::Vec3b &color, int y, int x, float length) const
    {
        if (x < 0 || x >= m_lab.cols || y < 0 || y >= m_lab.rows)
            return;
        const float candidate =
            m_distance.ptr<float>(y)[x] + cost(color, m_lab.ptr<cv::Vec3b>(y)[x], length);
        if (candidate < value)
            value = candidate;
    }
    void runRow(int y)
    {
        constexpr float diagonal = 1.41421356f;
        for (int i = 0; i < m_lab.cols; ++i) {
            const int x = m_step > 0 ? i : m_lab.cols - 1 - i;
            float &value = m_distance.ptr<float>(y)[x];
            const cv::Vec3b color = m_lab.ptr<cv::Vec3b>(y)[x];
            relax(value, color, y, x - m_step, 1.0f);
            relax(value, color, y - m_step, x, 1.0f);
            relax(value, color, y - m_step, x - 1, diagonal);
            relax(value, color, y - m_step, x + 1, diagonal);
        }
    }

    const cv::Mat &m_lab;
    cv::Mat &m_distance;
    float m_edgeWeight;
    int m_step;
};

} // namespace

cv::Mat geodesicDistance(const cv::Mat &lab, const cv::Mat &seeds, const GeodesicOptions &options)
{
    cv::Mat distance(lab.size(), CV_32F, cv::Scalar(unreachable));
    distance.setTo(0.0f, seeds);
    const float edgeWeight = float(options.edgeWeight);
    for (int round = 0; round < options.rounds; ++round) {
        Sweep(lab, distance, edgeWeight, 1).run();
        Sweep(lab, distance, edgeWeight, -1).run();
    }
    return distance;
}

} // namespace zk::engine
