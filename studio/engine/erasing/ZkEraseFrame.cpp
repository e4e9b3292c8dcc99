#include "ZkEraseFrame.h"

#include "../ZkFrameFeatures.h"
#include "../ZkMaskTools.h"
#include "ZkDiffusion.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

constexpr int sourceMargin = 2; // working pixels; what interpolation reaches stays off the hole
// Working pixels; masks seldom leave more than that of an object's border.
constexpr int cleanMargin = 8;
constexpr int rim = cleanMargin + 2; // working pixels around the hole that its box has

int pixelsOf(double shareOfHeight, int height)
{
    return std::max(0, int(std::lround(shareOfHeight * height)));
}

// How much of the filling shows, from the distance to the nearest pixel that stays.
cv::Mat fadedShare(const cv::Mat &mask, int grow, int feather)
{
    cv::Mat distance;
    cv::distanceTransform(mask == 0, distance, cv::DIST_L2, cv::DIST_MASK_5);
    const double width = std::min(feather, grow) + 1.0;
    cv::Mat share;
    cv::Mat(255.0 * (grow + 1.0 - distance) / width).convertTo(share, CV_8U);
    share.setTo(0, distance > grow);
    return share;
}

cv::Mat grownDownwards(const cv::Mat &mask, int pixels)
{
    cv::Mat result;
    cv::dilate(mask, result, cv::Mat::ones(pixels + 1, 1, CV_8U), {0, pixels});
    return result;
}

void findHole(EraseFrame *frame, const cv::Mat &marked, const EraserOptions &options)
{
    const cv::Mat mask = grownDownwards(marked, pixelsOf(options.below, marked.rows));
    const cv::Rect object = cv::boundingRect(mask);
    if (object.empty())
        return;
    const int grow = pixelsOf(options.grow, mask.rows);
    frame->full.box = grownBox(object, {grow, grow}, mask.size());
    frame->share = fadedShare(mask(frame->full.box), grow, pixelsOf(options.feather, mask.rows));
    frame->full.hole = frame->share > 0;
    frame->original = frame->full.picture(frame->full.box).clone();
}

void makeWorkPlate(EraseFrame *frame, const cv::Size &size)
{
    cv::Mat whole = cv::Mat::zeros(frame->full.picture.size(), CV_8U);
    if (!frame->full.box.empty())
        frame->full.hole.copyTo(whole(frame->full.box));
    if (size == whole.size()) {
        frame->work.picture = frame->full.picture.clone();
        frame->hole = whole;
    } else {
        cv::resize(frame->full.picture, frame->work.picture, size, 0, 0, cv::INTER_AREA);
        cv::Mat covered;
        whole.convertTo(whole, CV_32F);
        cv::resize(whole, covered, size, 0, 0, cv::INTER_AREA);
        frame->hole = covered > 0;
    }
    const cv::Rect hole = cv::boundingRect(frame->hole);
    if (!hole.empty())
        frame->work.box = grownBox(hole, {rim, rim}, size);
    frame->work.hole = frame->hole(frame->work.box).clone();
}

bool isAlike(const cv::Vec3b &a, const cv::Vec3b &b)
{
    constexpr int most = 75; // grey levels, of the three channels together
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]) <= most;
}

// Something like that colour is to be seen further away from the hole.
bool goesOn(const EraseFrame &frame, const cv::Point &at)
{
    constexpr int reach = 2 * cleanMargin, step = 2;
    const cv::Vec3b &color = frame.work.picture.at<cv::Vec3b>(at);
    const cv::Rect inside({0, 0}, frame.hole.size());
    for (int y = at.y - reach; y <= at.y + reach; y += step) {
        for (int x = at.x - reach; x <= at.x + reach; x += step) {
            const cv::Point other(x, y);
            if (inside.contains(other) && frame.clean.at<uchar>(other)
                && isAlike(frame.work.picture.at<cv::Vec3b>(other), color))
                return true;
        }
    }
    return false;
}

// Next to the hole only what goes on further outside is background for sure, and no blurred outline,
// shadow or part of the object that the mask has missed.
void findSources(EraseFrame *frame)
{
    frame->usable = grownMask(frame->hole, sourceMargin) == 0;
    frame->clean = grownMask(frame->hole, cleanMargin) == 0;
    const cv::Mat beside = frame->usable & ~frame->clean;
    const cv::Rect &box = frame->work.box;
    for (int y = box.y; y < box.br().y; ++y) {
        for (int x = box.x; x < box.br().x; ++x) {
            if (beside.at<uchar>(y, x) && !goesOn(*frame, {x, y}))
                frame->usable.at<uchar>(y, x) = 0;
        }
    }
}

} // namespace

EraseFrame
makeEraseFrame(int index, const cv::Mat &picture, const cv::Mat &mask, const EraserOptions &options)
{
    EraseFrame frame;
    frame.index = index;
    frame.full.picture = picture;
    if (!mask.empty())
        findHole(&frame, mask, options);
    if (!frame.full.box.empty())
        frame.full.picture = picture.clone();
    makeWorkPlate(&frame, workingSize(picture.size(), options.workingPixels));
    if (frame.isWhole()) {
        frame.usable = cv::Mat(frame.hole.size(), CV_8U, cv::Scalar(255));
        frame.clean = frame.usable;
    } else {
        findSources(&frame);
        fillSmoothly(&frame.work.picture, frame.hole);
    }
    return frame;
}

cv::Mat finishedPicture(const EraseFrame &frame)
{
    if (frame.isWhole())
        return frame.full.picture;
    cv::Mat result = frame.full.picture.clone();
    cv::Mat part = result(frame.full.box);
    part.forEach<cv::Vec3b>([&](cv::Vec3b &pixel, const int *at) {
        const int share = frame.share.at<uchar>(at[0], at[1]);
        const cv::Vec3b &own = frame.original.at<cv::Vec3b>(at[0], at[1]);
        for (int c = 0; c < 3; ++c)
            pixel[c] = uchar((share * pixel[c] + (255 - share) * own[c] + 127) / 255);
    });
    return result;
}

} // namespace zk::engine
