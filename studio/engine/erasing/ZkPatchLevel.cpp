#include "ZkPatchLevel.h"

#include "../ZkMaskTools.h"
#include "../ZkVectorised.h"
#include "ZkDiffusion.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zk::engine {

namespace {

constexpr int side = 2 * PatchLevel::radius + 1;
constexpr float trustBase = 1.3f; // per pixel away from the known part
constexpr int outer = std::numeric_limits<int>::max();

// Sum of squared differences of two patches; stops when it exceeds the limit.
ZKENGINE_VECTORISED int
patchCost(const uchar *a, const uchar *b, std::size_t stepA, std::size_t stepB, int limit)
{
    int sum = 0;
    for (int y = 0; y < side && sum < limit; ++y, a += stepA, b += stepB) {
        for (int i = 0; i < 4 * side; ++i) {
            const int d = int(a[i]) - int(b[i]);
            sum += d * d;
        }
    }
    return sum;
}

cv::Mat smoothlyFilled(const cv::Mat &picture, const cv::Mat &hole)
{
    cv::Mat planes[2] = {cv::Mat(picture.size(), CV_8UC3), cv::Mat(picture.size(), CV_8UC1)};
    const int order[] = {0, 0, 1, 1, 2, 2, 3, 3};
    cv::mixChannels(&picture, 1, planes, 2, order, 4);
    cv::Mat texture;
    cv::merge(std::vector<cv::Mat>(3, planes[1]), texture);
    fillSmoothly(&planes[0], hole);
    fillSmoothly(&texture, hole);
    cv::extractChannel(texture, planes[1], 0);
    cv::Mat result(picture.size(), CV_8UC4);
    cv::mixChannels(planes, 2, &result, 1, order, 4);
    return result;
}

} // namespace

PatchLevel::PatchLevel(const cv::Mat &picture, const cv::Mat &hole)
{
    const int r = radius;
    cv::copyMakeBorder(picture, m_picture, r, r, r, r, cv::BORDER_REPLICATE);
    cv::copyMakeBorder(hole, m_hole, r, r, r, r, cv::BORDER_REPLICATE);
    const cv::Mat touched = grownMask(m_hole, r);
    m_source = cv::Mat::zeros(m_hole.size(), CV_8U);
    m_index = cv::Mat(m_hole.size(), CV_32S, cv::Scalar(-1));
    cv::Mat distance;
    cv::distanceTransform(m_hole, distance, cv::DIST_L2, cv::DIST_MASK_3);
    m_trust.create(m_hole.size());
    for (int y = r; y < m_hole.rows - r; ++y) {
        for (int x = r; x < m_hole.cols - r; ++x) {
            m_trust(y, x) = std::pow(trustBase, -std::min(distance.at<float>(y, x), 60.0f));
            if (touched.at<uchar>(y, x)) {
                m_index(y, x) = int(m_targets.size());
                m_targets.emplace_back(x, y);
            } else {
                m_source(y, x) = 255;
                m_sources.emplace_back(x, y);
            }
        }
    }
    m_matches.resize(m_targets.size());
}

std::uint32_t PatchLevel::random()
{
    m_random ^= m_random << 13;
    m_random ^= m_random >> 17;
    m_random ^= m_random << 5;
    return m_random;
}

cv::Point PatchLevel::anySource()
{
    return m_sources[random() % m_sources.size()];
}

bool PatchLevel::isSource(const cv::Point &at) const
{
    return unsigned(at.x) < unsigned(m_source.cols) && unsigned(at.y) < unsigned(m_source.rows)
        && m_source(at);
}

int PatchLevel::costOf(const cv::Point &target, const cv::Point &source, int limit) const
{
    const cv::Point corner(radius, radius);
    return patchCost(&m_picture(target - corner)[0],
                     &m_picture(source - corner)[0],
                     m_picture.step,
                     m_picture.step,
                     limit);
}

void PatchLevel::startAnyhow(std::uint32_t seed)
{
    m_random = seed | 1u;
    smoothlyFilled(m_picture, m_hole).copyTo(m_picture);
    for (Match &match : m_matches)
        match.at = anySource();
}

void PatchLevel::startFrom(const PatchLevel &other, std::uint32_t seed)
{
    m_random = seed | 1u;
    const cv::Point2d scale(double(m_hole.cols - 2 * radius) / (other.m_hole.cols - 2 * radius),
                            double(m_hole.rows - 2 * radius) / (other.m_hole.rows - 2 * radius));
    for (std::size_t i = 0; i < m_targets.size(); ++i) {
        const cv::Point at = m_targets[i];
        const cv::Point there(
            std::clamp(int((at.x - radius) / scale.x) + radius, 0, other.m_hole.cols - 1),
            std::clamp(int((at.y - radius) / scale.y) + radius, 0, other.m_hole.rows - 1));
        m_matches[i].at = {-1, -1};
        const int index = other.m_index(there);
        if (index >= 0) {
            const cv::Point shift = other.m_matches[std::size_t(index)].at - there;
            m_matches[i].at =
                at + cv::Point(cvRound(shift.x * scale.x), cvRound(shift.y * scale.y));
        }
        if (!isSource(m_matches[i].at))
            m_matches[i].at = anySource();
        m_matches[i].cost = 0;
    }
    vote();
}

void PatchLevel::tryMatch(const cv::Point &target, const cv::Point &source)
{
    Match &own = match(target);
    if (!isSource(source) || source == own.at)
        return;
    const int cost = costOf(target, source, own.cost);
    if (cost < own.cost)
        own = {source, cost};
}

// Takes over what the neighbours found, then looks around at random in ever smaller circles.
void PatchLevel::search(std::size_t i, int step)
{
    const cv::Point at = m_targets[i];
    for (const cv::Point &offset : {cv::Point(-step, 0), cv::Point(0, -step)}) {
        const int neighbour = m_index(at + offset);
        if (neighbour >= 0)
            tryMatch(at, m_matches[std::size_t(neighbour)].at - offset);
    }
    for (int reach = std::max(m_hole.cols, m_hole.rows) / 2; reach >= 2; reach /= 2) {
        const int span = 2 * reach + 1;
        const cv::Point jump(int(random() % unsigned(span)) - reach,
                             int(random() % unsigned(span)) - reach);
        tryMatch(at, match(at).at + jump);
    }
}

void PatchLevel::rescore()
{
    for (std::size_t i = 0; i < m_targets.size(); ++i)
        m_matches[i].cost = costOf(m_targets[i], m_matches[i].at, outer);
}

void PatchLevel::improve(const std::function<bool()> &stopped)
{
    rescore();
    const std::size_t count = m_targets.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i % 1024 == 0 && stopped())
            return;
        search(i, 1);
    }
    for (std::size_t i = count; i-- > 0;) {
        if (i % 1024 == 0 && stopped())
            return;
        search(i, -1);
    }
    vote();
}

// Each hole pixel becomes the mean of what the patches over it have there, those that fit best and
// that lie near the known part counting most.
void PatchLevel::vote()
{
    if (m_targets.empty())
        return;
    std::vector<int> costs;
    costs.reserve(m_matches.size());
    for (const Match &match : m_matches)
        costs.push_back(match.cost);
    const auto upper = costs.begin() + std::ptrdiff_t(costs.size() * 3 / 4);
    std::nth_element(costs.begin(), upper, costs.end());
    const float spread = float(std::max(*upper, 100));
    std::vector<float> weights(m_matches.size());
    for (std::size_t i = 0; i < m_matches.size(); ++i)
        weights[i] = m_trust(m_targets[i]) * std::exp(-float(m_matches[i].cost) / spread);

    cv::Mat_<cv::Vec4b> result = m_picture.clone();
    for (std::size_t i = 0; i < m_targets.size(); ++i) {
        const cv::Point at = m_targets[i];
        if (!m_hole(at))
            continue;
        cv::Vec4f sum = cv::Vec4f::all(0.0f);
        float total = 1e-20f;
        for (int dy = -radius; dy <= radius; ++dy) {
            for (int dx = -radius; dx <= radius; ++dx) {
                const int index = m_index(at.y + dy, at.x + dx);
                if (index < 0)
                    continue;
                const cv::Point from = m_matches[std::size_t(index)].at - cv::Point(dx, dy);
                const float weight = weights[std::size_t(index)];
                sum += weight * cv::Vec4f(m_picture(from));
                total += weight;
            }
        }
        result(at) = cv::Vec4b(sum * (1.0f / total));
    }
    // The padding repeats the border, so that patches there see it.
    const cv::Mat inside =
        result(cv::Rect(radius, radius, result.cols - 2 * radius, result.rows - 2 * radius));
    cv::copyMakeBorder(inside, m_picture, radius, radius, radius, radius, cv::BORDER_REPLICATE);
}

cv::Mat PatchLevel::picture() const
{
    return m_picture(
        cv::Rect(radius, radius, m_picture.cols - 2 * radius, m_picture.rows - 2 * radius));
}

} // namespace zk::engine
