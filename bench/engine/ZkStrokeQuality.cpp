#include "ZkQuality.h"

#include "ZkClip.h"
#include "ZkSimulatedUser.h"

#include <ZkInteractiveSegmenter.h>
#include <ZkMatte.h>

#include <opencv2/imgproc.hpp>

#include <chrono>
#include <vector>

namespace zk::bench {

namespace {

constexpr int corrections = 3;
constexpr int cutRounds = 3;

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

cv::Mat grabCut(const cv::Mat &frame, const engine::Scribbles &scribbles)
{
    cv::Mat labels(frame.size(), CV_8U, cv::Scalar(cv::GC_PR_BGD));
    // The border is background, as the segmenter supposes, too: without any, grabCut does not start.
    cv::rectangle(labels, {0, 0, frame.cols, frame.rows}, cv::Scalar(cv::GC_BGD), 4);
    labels.setTo(cv::GC_FGD, scribbles.keep);
    labels.setTo(cv::GC_BGD, scribbles.remove);
    cv::Mat back, front;
    cv::grabCut(frame, labels, {}, back, front, cutRounds, cv::GC_INIT_WITH_MASK);
    return (labels == cv::GC_FGD) | (labels == cv::GC_PR_FGD);
}

} // namespace

StrokeQuality measureStrokes(const std::string &folder, const QualityOptions &options)
{
    Clip clip(folder, options.height);
    const cv::Mat frame = clip.nextFrame();
    const cv::Mat truth = clip.mask(0);
    const std::vector<cv::Mat> neighbours {clip.nextFrame()}; // as the editor gives them: one away
    engine::Scribbles scribbles {clip.strokes("keep"), clip.strokes("remove")};
    StrokeQuality quality;
    auto start = Clock::now();
    engine::InteractiveSegmenter segmenter(options.segmenter);
    cv::Mat matte = segmenter.segment(frame, scribbles, {}, neighbours);
    quality.seconds = secondsSince(start);
    quality.first = engine::intersectionOverUnion(matte, truth);

    start = Clock::now();
    quality.cut = engine::intersectionOverUnion(grabCut(frame, scribbles), truth);
    quality.cutSeconds = secondsSince(start);

    for (int i = 0; i < corrections; ++i) {
        const Correction correction = correctionOf(matte, truth);
        if (correction.stroke.empty())
            break;
        cv::Mat &side = correction.isKeep ? scribbles.keep : scribbles.remove;
        side |= correction.stroke;
        matte = segmenter.segment(frame, scribbles, matte, neighbours);
    }
    quality.corrected = engine::intersectionOverUnion(matte, truth);
    return quality;
}

} // namespace zk::bench
