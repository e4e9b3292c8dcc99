#include "ZkFrameFeatures.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace zk::engine {

namespace {

// Spread of one channel in a square window, amplified so that weak textures use the range of a byte.
void writeDeviation(const cv::Mat &channel, int window, cv::Mat plane)
{
    cv::Mat mean, squares;
    const cv::Size box(window, window);
    cv::boxFilter(channel, mean, CV_32F, box, {-1, -1}, true, cv::BORDER_REFLECT);
    cv::sqrBoxFilter(channel, squares, CV_32F, box, {-1, -1}, true, cv::BORDER_REFLECT);
    cv::Mat variance = squares - mean.mul(mean);
    cv::sqrt(cv::max(variance, 0.0), variance);
    variance.convertTo(plane, CV_8U, 4.0);
}

struct Gradient
{
    explicit Gradient(const cv::Mat &channel)
    {
        cv::Sobel(channel, x, CV_16S, 1, 0, 3, 1, 0, cv::BORDER_REPLICATE);
        cv::Sobel(channel, y, CV_16S, 0, 1, 3, 1, 0, cv::BORDER_REPLICATE);
    }
    void writeStrength(cv::Mat plane) const
    {
        const cv::Mat strength = cv::abs(x) + cv::abs(y);
        strength.convertTo(plane, CV_8U, 0.25);
    }

    cv::Mat x;
    cv::Mat y;
};

void writeShifted(const cv::Mat &image, const cv::Point &shift, cv::Mat *threePlanes)
{
    const int reach = std::max(std::abs(shift.x), std::abs(shift.y));
    cv::Mat padded;
    cv::copyMakeBorder(image, padded, reach, reach, reach, reach, cv::BORDER_REPLICATE);
    const cv::Rect window(cv::Point(reach, reach) + shift, image.size());
    cv::split(padded(window), threePlanes);
}

// The planes of one frame while they are written.
class PlaneWriter
{
public:
    PlaneWriter(cv::Mat &planes, const cv::Size &size)
        : m_planes(planes)
        , m_size(size)
    { }

    cv::Mat at(int feature) const { return cv::Mat(m_size, CV_8U, m_planes.ptr(feature)); }
    void writeColor(int feature, const cv::Mat &lab) const { writeShifted(feature, lab, {0, 0}); }
    void writeShifted(int feature, const cv::Mat &lab, const cv::Point &shift) const
    {
        cv::Mat three[] = {at(feature), at(feature + 1), at(feature + 2)};
        engine::writeShifted(lab, shift, three);
    }

private:
    cv::Mat &m_planes;
    cv::Size m_size;
};

void writeTexture(const PlaneWriter &write)
{
    writeDeviation(write.at(Feature::color), 5, write.at(Feature::deviation));
    writeDeviation(write.at(Feature::color), 13, write.at(Feature::deviation + 1));
    writeDeviation(write.at(Feature::color + 1), 9, write.at(Feature::deviation + 2));
    writeDeviation(write.at(Feature::color + 2), 9, write.at(Feature::deviation + 3));
    const Gradient fine(write.at(Feature::fine));
    fine.writeStrength(write.at(Feature::gradient));
    const Gradient coarse(write.at(Feature::middle));
    coarse.writeStrength(write.at(Feature::gradient + 1));
    coarse.x.convertTo(write.at(Feature::gradient + 2), CV_8U, 0.5, 128.0);
    coarse.y.convertTo(write.at(Feature::gradient + 3), CV_8U, 0.5, 128.0);
}

void writeAround(const cv::Mat &fine, const cv::Mat &middle, const PlaneWriter &write)
{
    int feature = Feature::around;
    for (const cv::Point &shift : {cv::Point(4, 0), {-4, 0}, {0, 4}, {0, -4}}) {
        write.writeShifted(feature, fine, shift);
        feature += 3;
    }
    for (const cv::Point &shift : {cv::Point(9, 9), {-9, 9}, {9, -9}, {-9, -9}}) {
        write.writeShifted(feature, middle, shift);
        feature += 3;
    }
}

} // namespace

cv::Mat FrameFeatures::plane(int feature) const
{
    return planes.row(feature).reshape(1, lab.rows);
}

cv::Size workingSize(const cv::Size &frame, int workingPixels)
{
    const double area = double(frame.width) * frame.height;
    const double scale = area > workingPixels ? std::sqrt(workingPixels / area) : 1.0;
    const auto side = [&](int length) { return std::max(1, cvRound(length * scale)); };
    return {side(frame.width), side(frame.height)};
}

cv::Mat shrunkFrame(const cv::Mat &frame, const cv::Size &size)
{
    cv::Mat small = frame;
    if (frame.size() != size)
        cv::resize(frame, small, size, 0, 0, cv::INTER_AREA);
    cv::Mat rgb;
    if (small.channels() == 4)
        cv::cvtColor(small, rgb, cv::COLOR_RGBA2RGB);
    else
        rgb = small.clone();
    return rgb;
}

void addMotion(FrameFeatures *features, const std::vector<cv::Mat> &motions)
{
    constexpr double levelsPerPixel =
        8.0; // 16 pixels of a picture 240 high are the most that it can say
    cv::Mat planes(Feature::countWithMotion, features->planes.cols, CV_8U, cv::Scalar(128));
    features->planes.copyTo(planes.rowRange(0, features->planes.rows));
    for (int i = 0; i < std::min(2, int(motions.size())); ++i) {
        cv::Mat here, parts[2];
        cv::resize(motions[i], here, features->size(), 0, 0, cv::INTER_LINEAR);
        cv::split(here, parts);
        for (int k = 0; k < 2; ++k) {
            cv::Mat plane = planes.row(Feature::motion + 2 * i + k).reshape(1, here.rows);
            parts[k].convertTo(plane, CV_8U, levelsPerPixel, 128.0);
        }
    }
    features->planes = planes;
}

FrameFeatures computeFeatures(const cv::Mat &frame, const FeatureOptions &options)
{
    FrameFeatures features;
    const cv::Size size = workingSize(frame.size(), options.workingPixels);
    cv::cvtColor(shrunkFrame(frame, size), features.lab, cv::COLOR_RGB2Lab);
    features.planes.create(Feature::count, size.area(), CV_8U);

    cv::Mat fine, middle, coarse;
    cv::GaussianBlur(features.lab, fine, {5, 5}, 1.2);
    cv::boxFilter(fine, middle, -1, {5, 5}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::boxFilter(middle, middle, -1, {5, 5}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::boxFilter(middle, coarse, -1, {15, 15}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::boxFilter(coarse, coarse, -1, {11, 11}, {-1, -1}, true, cv::BORDER_REPLICATE);

    const PlaneWriter write(features.planes, size);
    write.writeColor(Feature::color, features.lab);
    write.writeColor(Feature::fine, fine);
    write.writeColor(Feature::middle, middle);
    write.writeColor(Feature::coarse, coarse);
    writeTexture(write);
    writeAround(fine, middle, write);
    return features;
}

} // namespace zk::engine
