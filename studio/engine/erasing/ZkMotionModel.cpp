#include "ZkMotionModel.h"

#include "ZkMaskTools.h"

#include <algorithm>

namespace zk::engine {

namespace {

constexpr int trials = 80; // of three samples each: enough when half the samples are wrong
constexpr int rounds = 6; // of reweighting
constexpr double tolerance = 1.0; // squared pixels: what the flow's own noise is
constexpr std::size_t fewest = 12;

} // namespace

std::vector<MotionSample> motionSamples(const cv::Mat &motion, const cv::Mat &mask, int most)
{
    std::vector<MotionSample> samples;
    for (const int i : sampledPixels(mask, most)) {
        const cv::Point at(i % mask.cols, i / mask.cols);
        samples.push_back({at, motion.at<cv::Vec2f>(at)});
    }
    return samples;
}

cv::Point2d MotionModel::normalised(const cv::Point2f &at) const
{
    return (cv::Point2d(at) - m_center) * m_scale;
}

cv::Vec2f MotionModel::motionAt(const cv::Point2f &at) const
{
    const cv::Point2d n = normalised(at);
    const Row &p = m_parameters;
    const double bend = p[6] * n.x + p[7] * n.y;
    return {float(p[0] + p[1] * n.x + p[2] * n.y + bend * n.x),
            float(p[3] + p[4] * n.x + p[5] * n.y + bend * n.y)};
}

cv::Mat MotionModel::motionOver(const cv::Size &size) const
{
    cv::Mat result(size, CV_32FC2);
    result.forEach<cv::Vec2f>([this](cv::Vec2f &motion, const int *at) {
        motion = motionAt({float(at[1]), float(at[0])});
    });
    return result;
}

double MotionModel::misfit(const MotionSample &sample) const
{
    const cv::Vec2f d = sample.motion - motionAt(sample.at);
    return double(d.dot(d));
}

// The affine motion of three samples taken by chance; false when they lie in a line.
bool MotionModel::startFromThree(const std::vector<MotionSample> &samples, cv::RNG &random)
{
    cv::Matx33d places;
    cv::Matx<double, 3, 2> motions;
    for (int i = 0; i < 3; ++i) {
        const MotionSample &sample = samples[std::size_t(random.uniform(0, int(samples.size())))];
        const cv::Point2d n = normalised(sample.at);
        const double place[] = {1.0, n.x, n.y};
        for (int c = 0; c < 3; ++c)
            places(i, c) = place[c];
        for (int c = 0; c < 2; ++c)
            motions(i, c) = double(sample.motion[c]);
    }
    if (std::abs(cv::determinant(places)) < 0.02)
        return false;
    const cv::Matx<double, 3, 2> affine = places.inv() * motions;
    m_parameters = {};
    for (std::size_t i = 0; i < 6; ++i)
        m_parameters[i] = affine(int(i % 3), int(i / 3));
    return true;
}

// The one of them that explains most of the others.
void MotionModel::startFrom(const std::vector<MotionSample> &samples, cv::RNG &random)
{
    double least = -1.0;
    Row best {};
    for (int trial = 0; trial < trials; ++trial) {
        if (!startFromThree(samples, random))
            continue;
        double cost = 0.0;
        for (const MotionSample &sample : samples)
            cost += std::min(misfit(sample), tolerance);
        if (least < 0.0 || cost < least) {
            least = cost;
            best = m_parameters;
        }
    }
    m_parameters = best;
}

bool MotionModel::solve(const std::vector<MotionSample> &samples)
{
    cv::Matx<double, 8, 8> normal = cv::Matx<double, 8, 8>::eye() * 1e-3;
    cv::Matx<double, 8, 1> right = cv::Matx<double, 8, 1>::zeros();
    for (const MotionSample &sample : samples) {
        const double closeness = 1.0 / (1.0 + misfit(sample) / (0.25 * tolerance));
        const double weight = closeness * closeness;
        const cv::Point2d n = normalised(sample.at);
        const Row rows[2] = {{1, n.x, n.y, 0, 0, 0, n.x * n.x, n.x * n.y},
                             {0, 0, 0, 1, n.x, n.y, n.x * n.y, n.y * n.y}};
        for (int k = 0; k < 2; ++k) {
            const double value = weight * double(sample.motion[k]);
            for (int i = 0; i < 8; ++i) {
                right(i) += rows[k][std::size_t(i)] * value;
                for (int j = 0; j < 8; ++j)
                    normal(i, j) += weight * rows[k][std::size_t(i)] * rows[k][std::size_t(j)];
            }
        }
    }
    const auto solution = normal.solve(right, cv::DECOMP_CHOLESKY);
    std::copy_n(solution.val, 8, m_parameters.begin());
    return cv::checkRange(cv::Mat(solution));
}

bool MotionModel::fit(const std::vector<MotionSample> &samples,
                      const cv::Rect &area,
                      std::uint64_t seed)
{
    if (samples.size() < fewest)
        return false;
    m_center = 0.5 * cv::Point2d(area.tl() + area.br());
    m_scale = 2.0 / std::max(area.width, area.height);
    cv::RNG random(seed);
    startFrom(samples, random);
    for (int i = 0; i < rounds; ++i) {
        if (!solve(samples))
            return false;
    }
    const auto agrees = [this](const MotionSample &sample) { return misfit(sample) < tolerance; };
    m_inliers =
        double(std::count_if(samples.begin(), samples.end(), agrees)) / double(samples.size());
    return true;
}

} // namespace zk::engine
