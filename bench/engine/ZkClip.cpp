#include "ZkClip.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace zk::bench {

namespace {

cv::Mat scaled(const cv::Mat &image, const cv::Size &size, int interpolation)
{
    cv::Mat result = image;
    if (image.size() != size)
        cv::resize(image, result, size, 0, 0, interpolation);
    return result;
}

void paintStroke(const cv::FileNode &stroke, double scale, cv::Mat &image)
{
    std::vector<cv::Point> points;
    for (const cv::FileNode &point : stroke["points"])
        points.emplace_back(cvRound(double(point[0]) * scale), cvRound(double(point[1]) * scale));
    const int width = std::max(1, cvRound(double(stroke["width"]) * scale));
    cv::polylines(image, points, false, cv::Scalar(255), width);
}

} // namespace

Clip::Clip(const std::string &folder, int height)
    : m_folder(folder)
    , m_height(height)
    , m_capture(folder + "/clip.mkv")
{
    m_stored.width = int(m_capture.get(cv::CAP_PROP_FRAME_WIDTH));
    m_stored.height = int(m_capture.get(cv::CAP_PROP_FRAME_HEIGHT));
}

cv::Size Clip::outputSize(const cv::Size &stored) const
{
    if (m_height == 0 || m_height == stored.height)
        return stored;
    // Even widths, as a camera would give.
    return {2 * cvRound(0.5 * stored.width * m_height / stored.height), m_height};
}

cv::Mat Clip::nextFrame()
{
    cv::Mat frame;
    if (!m_capture.read(frame))
        return {};
    cv::cvtColor(frame, frame, cv::COLOR_BGR2RGB);
    return scaled(frame, outputSize(frame.size()), cv::INTER_CUBIC);
}

cv::Mat Clip::mask(int frame) const
{
    char name[32];
    std::snprintf(name, sizeof name, "/masks/%05d.png", frame);
    const cv::Mat mask = cv::imread(m_folder + name, cv::IMREAD_GRAYSCALE);
    return mask.empty() ? mask : scaled(mask, outputSize(mask.size()), cv::INTER_LINEAR);
}

cv::Mat Clip::strokes(const std::string &mode) const
{
    const cv::Size size = outputSize(m_stored);
    cv::Mat image = cv::Mat::zeros(size, CV_8U);
    const cv::FileStorage file(m_folder + "/strokes.json", cv::FileStorage::READ);
    for (const cv::FileNode &stroke : file["strokes"]) {
        if (std::string(stroke["mode"]) == mode && int(stroke["frame"]) == 0)
            paintStroke(stroke, double(size.height) / m_stored.height, image);
    }
    return image;
}

std::vector<std::string> clipNames(const std::string &folder)
{
    std::vector<std::string> names;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        if (std::filesystem::exists(entry.path() / "clip.mkv"))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace zk::bench
