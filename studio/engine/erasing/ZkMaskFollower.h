// Grows masks by the parts of an object that they have missed. Not public.
#pragma once

#include "ZkEraseCrew.h"
#include "ZkObjectEraser.h"

#include <opencv2/core.hpp>

#include <deque>
#include <vector>

namespace zk::engine {

// Frames go in one by one, in the order of the clip, and come out in that order, some frames later: what
// moves along with an object is seen by the frames before and after. Holds some frames, uncopied.
class MaskFollower
{
public:
    // A frame needs so many frames before and after it.
    static constexpr int span = 8;

    explicit MaskFollower(const EraserOptions &options);

    void add(const cv::Mat &picture, const cv::Mat &mask);
    void end() { m_ended = true; }
    // Frames that can be taken.
    int ready() const;
    // The next frames, at most count, appended to the lists. False when the caller wants to stop.
    bool
    take(int count, EraseCrew *crew, std::vector<cv::Mat> *pictures, std::vector<cv::Mat> *masks);

private:
    struct Item
    {
        cv::Mat picture;
        cv::Mat mask;
        cv::Mat small; // the picture in working size
    };

    bool makeSmall(EraseCrew *crew);
    cv::Mat partsOf(int place, const cv::Mat &mask) const;
    cv::Mat grown(int place) const;

    double m_reach;
    std::deque<Item> m_items;
    int m_next = 0; // the first item that was not taken
    bool m_ended = false;
};

} // namespace zk::engine
