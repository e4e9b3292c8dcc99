#include "ZkScribbleRules.h"

#include "ZkMatte.h"

namespace zk::engine {

namespace {

bool isMaskFor(const cv::Mat &mask, const cv::Size &size)
{
    return mask.empty() || isMatteOf(mask, size);
}

} // namespace

bool isSegmentable(const cv::Mat &frame, const Scribbles &scribbles, const cv::Mat &previous)
{
    if (!isFrame(frame))
        return false;
    const cv::Size size = frame.size();
    if (!isMaskFor(scribbles.keep, size) || !isMaskFor(scribbles.remove, size)
        || !isMaskFor(previous, size))
        return false;
    return !previous.empty() || (!scribbles.keep.empty() && cv::countNonZero(scribbles.keep) > 0);
}

void obeyScribbles(cv::Mat *matte, const Scribbles &scribbles)
{
    if (!scribbles.keep.empty())
        matte->setTo(255, scribbles.keep);
    if (!scribbles.remove.empty())
        matte->setTo(0, scribbles.remove);
}

} // namespace zk::engine
