// A textured wall before a panning camera, with a disc that moves across; what the disc hides is known.
#pragma once

#include <erasing/ZkObjectEraser.h>

#include <opencv2/imgproc.hpp>

#include <vector>

namespace zk::test {

class EraseScene : public engine::EraseSource, public engine::EraseSink
{
public:
    EraseScene(const cv::Size &size, int count)
        : size(size)
        , count(count)
    {
        wall.create(size.height + 8, size.width + 2 * count + 8, CV_8UC3);
        cv::RNG random(5);
        random.fill(wall, cv::RNG::UNIFORM, 0, 256);
        cv::GaussianBlur(wall, wall, {0, 0}, 2.0);
        cv::normalize(wall, wall, 0, 255, cv::NORM_MINMAX);
    }

    // The wall alone, as the camera sees it: it pans by pan pixels per frame.
    cv::Mat background(int index) const
    {
        cv::Mat result;
        const cv::Matx23d shift(1, 0, 2 + pan * index, 0, 1, 2);
        cv::warpAffine(wall, result, shift, size, cv::INTER_CUBIC | cv::WARP_INVERSE_MAP);
        if (index >= cutAt)
            cv::flip(result, result, -1);
        return result;
    }
    cv::Mat mask(int index) const
    {
        if (maskAll || index == maskAllAt)
            return cv::Mat(size, CV_8U, cv::Scalar(255));
        cv::Mat mask = cv::Mat::zeros(size, CV_8U);
        const double x = still ? 0.5 : (index + 0.5) / count;
        cv::circle(mask, {cvRound(x * size.width), size.height / 2}, size.height / 6, 255, -1);
        return index >= maskUntil ? cv::Mat() : mask;
    }
    cv::Mat frame(int index) const
    {
        cv::Mat result = background(index);
        if (!mask(index).empty())
            result.setTo(cv::Scalar(20, 20, 230), mask(index));
        return result;
    }

    int frameCount() const override { return count; }
    bool read(int index, cv::Mat *picture, cv::Mat *mask) override
    {
        *picture = frame(index);
        *mask = this->mask(index);
        if (missed > 0)
            cv::erode(*mask, *mask, cv::Mat::ones(2 * missed + 1, 2 * missed + 1, CV_8U));
        if (index == otherSizeAt)
            *picture = (*picture)(cv::Rect(0, 0, size.width - 1, size.height)).clone();
        return index != unreadableAt;
    }
    bool write(int index, const cv::Mat &picture) override
    {
        inOrder = inOrder && index == int(result.size());
        result.push_back(picture.clone());
        return index != unwritableAt;
    }

    cv::Size size;
    int count;
    double pan = 1.3; // pixels per frame
    int missed = 0; // pixels at the disc's outline that the masks that are read leave out
    bool still = false; // the disc stays in the middle of the picture
    bool maskAll = false;
    int maskAllAt = -1;
    int maskUntil = 1 << 20; // from there on frames have no mask
    int cutAt = 1 << 20;
    int unreadableAt = -1;
    int otherSizeAt = -1;
    int unwritableAt = -1;
    std::vector<cv::Mat> result;
    bool inOrder = true;
    cv::Mat wall;
};

} // namespace zk::test
