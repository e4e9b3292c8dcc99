#include "ZkMaskFollower.h"

#include "../ZkForeignMotion.h"
#include "../ZkFrameFeatures.h"
#include "../ZkMaskTools.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

// In frames: what is fast is out of sight soon, and what is slow takes its time to move by its own size.
constexpr int distances[] = {2, MaskFollower::span};

// In working pixels: what lies around an object and tells the background's motion.
constexpr int surroundings = 40;

// Parts that are not seen at this size fit into what a mask is grown by anyhow.
constexpr int workingPixels = 427 * 240;

} // namespace

MaskFollower::MaskFollower(const EraserOptions &options)
    : m_reach(options.follow)
{ }

void MaskFollower::add(const cv::Mat &picture, const cv::Mat &mask)
{
    m_items.push_back({picture, mask, {}});
}

int MaskFollower::ready() const
{
    const int waiting = int(m_items.size()) - m_next;
    return m_ended || m_reach <= 0.0 ? waiting : std::max(0, waiting - span);
}

bool MaskFollower::makeSmall(EraseCrew *crew)
{
    return crew->run(int(m_items.size()), [this](int i) {
        Item &item = m_items[std::size_t(i)];
        if (item.small.empty())
            item.small = shrunkFrame(item.picture, workingSize(item.picture.size(), workingPixels));
    });
}

// Of the small mask of that frame.
cv::Mat MaskFollower::partsOf(int place, const cv::Mat &mask) const
{
    const int reach = std::max(1, int(std::lround(m_reach * mask.rows)));
    const cv::Size margin(reach + surroundings, reach + surroundings);
    const cv::Rect area = grownBox(cv::boundingRect(mask), margin, mask.size());
    cv::Mat parts = cv::Mat::zeros(mask.size(), CV_8U), here = parts(area);
    for (const int distance : distances) {
        std::vector<cv::Mat> others;
        for (const int other : {place - distance, place + distance}) {
            if (other >= 0 && other < int(m_items.size()))
                others.push_back(m_items[std::size_t(other)].small(area));
        }
        const cv::Mat &picture = m_items[std::size_t(place)].small;
        const cv::Mat found = movingAlong(picture(area), others, mask(area), reach);
        if (!found.empty())
            here |= found;
    }
    return parts;
}

cv::Mat MaskFollower::grown(int place) const
{
    const Item &item = m_items[std::size_t(place)];
    if (item.mask.empty())
        return item.mask;
    cv::Mat covered, more;
    item.mask.convertTo(covered, CV_32F);
    cv::resize(covered, covered, item.small.size(), 0, 0, cv::INTER_AREA);
    covered = covered >= 127.5f;
    if (cv::countNonZero(covered) == 0)
        return item.mask;
    cv::resize(partsOf(place, covered), more, item.mask.size(), 0, 0, cv::INTER_LINEAR);
    return item.mask | (more >= 128);
}

bool MaskFollower::take(int count,
                        EraseCrew *crew,
                        std::vector<cv::Mat> *pictures,
                        std::vector<cv::Mat> *masks)
{
    const int taken = std::min(count, ready());
    std::vector<cv::Mat> grownMasks(std::size_t(std::max(0, taken)));
    if (m_reach > 0.0) {
        const auto grow = [&](int i) { grownMasks[std::size_t(i)] = grown(m_next + i); };
        if (!makeSmall(crew) || !crew->run(taken, grow))
            return false;
    }
    for (int i = 0; i < taken; ++i) {
        Item &item = m_items[std::size_t(m_next + i)];
        pictures->push_back(item.picture);
        masks->push_back(m_reach > 0.0 ? grownMasks[std::size_t(i)] : item.mask);
        item.picture.release();
    }
    m_next += taken;
    const int drop = std::max(0, m_next - span);
    m_items.erase(m_items.begin(), m_items.begin() + drop);
    m_next -= drop;
    return true;
}

} // namespace zk::engine
