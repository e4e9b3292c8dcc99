#include "ZkOwnMotion.h"

#include "ZkMotion.h"
#include "erasing/ZkMotionModel.h"

#include <algorithm>
#include <vector>

namespace zk::engine {

namespace {

constexpr double unitHeight = 240.0; // pixels
constexpr int samplesDown = 30; // and as many across as are as far apart

MotionModel cameraMotion(const cv::Mat &motion)
{
    const int step = std::max(1, motion.rows / samplesDown);
    std::vector<MotionSample> samples;
    for (int y = step / 2; y < motion.rows; y += step) {
        for (int x = step / 2; x < motion.cols; x += step)
            samples.push_back({cv::Point2f(float(x), float(y)), motion.at<cv::Vec2f>(y, x)});
    }
    MotionModel model;
    // What cannot be fitted is no motion.
    return model.fit(samples, {{0, 0}, motion.size()}, 1) ? model : MotionModel();
}

} // namespace

cv::Mat ownMotion(const cv::Mat &image, const cv::Mat &neighbour)
{
    cv::Mat motion = motionBetween(image, neighbour);
    motion *= unitHeight / motion.rows;
    const MotionModel camera = cameraMotion(motion);
    return motion - camera.motionOver(motion.size());
}

} // namespace zk::engine
