// zk_engine_bench --data=DIR [Google Benchmark's own options]
//
// Times the whole engine and each of its stages on a real frame, and prints how much faster the strokes
// become a matte than by cv::grabCut on the full frame, measured in the same process.
#include "ZkClip.h"

#include <ZkAppearanceModel.h>
#include <ZkColorModel.h>
#include <ZkEvidence.h>
#include <ZkFrameData.h>
#include <ZkGeodesicDistance.h>
#include <ZkGraphCut.h>
#include <ZkInteractiveSegmenter.h>
#include <ZkLabelTransfer.h>
#include <ZkMatte.h>
#include <ZkMatteRefiner.h>
#include <ZkMatteWarp.h>
#include <ZkMotion.h>
#include <ZkObjectTracker.h>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

using namespace zk;

namespace {

constexpr int grabCutRounds = 3;

// Two neighbouring frames of one clip at one height, and what the stages take.
struct Input
{
    Input(const std::string &folder, int height)
    {
        bench::Clip clip(folder, height);
        first = clip.nextFrame();
        second = clip.nextFrame();
        truth = clip.mask(0);
        keep = clip.strokes("keep");
        earlier = tracker.prepareFirst(first);
        later = tracker.prepare(earlier, second);
        cv::resize(truth, coarse, earlier.data()->features.size(), 0, 0, cv::INTER_AREA);
        coarse = engine::hardMatte(coarse);
        coarse.convertTo(share, CV_32F, 1.0 / 255.0);
        appearance.learnTruth(earlier.data()->features, coarse);
    }
    const engine::FrameFeatures &features() const { return later.data()->features; }
    cv::Rect everything() const { return {{0, 0}, features().size()}; }

    cv::Mat first, second, truth, keep;
    engine::ObjectTracker tracker;
    engine::PreparedFrame earlier, later;
    engine::AppearanceModel appearance;
    cv::Mat coarse; // 0 or 255, working size
    cv::Mat share; // 0 .. 1, working size
};

cv::Mat grabCut(const Input &input)
{
    cv::Mat labels(input.first.size(), CV_8U, cv::Scalar(cv::GC_PR_BGD));
    labels.setTo(cv::GC_FGD, input.keep);
    const cv::Rect inner(2, 2, labels.cols - 4, labels.rows - 4);
    cv::Mat border(labels.size(), CV_8U, cv::Scalar(255));
    border(inner) = 0;
    labels.setTo(cv::GC_BGD, border & ~input.keep);
    cv::Mat background, foreground;
    cv::grabCut(
        input.first, labels, {}, background, foreground, grabCutRounds, cv::GC_INIT_WITH_MASK);
    return (labels == cv::GC_FGD) | (labels == cv::GC_PR_FGD);
}

cv::Mat strokes(const Input &input)
{
    return engine::InteractiveSegmenter().segment(
        input.first, {input.keep, {}}, {}, {input.second});
}

template<typename Function>
double seconds(const Function &function, cv::Mat *result)
{
    const auto start = std::chrono::steady_clock::now();
    *result = function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Comparison
{
    double ownSeconds = 0.0;
    double ownIou = 0.0;
    double grabCutSeconds = 0.0;
    double grabCutIou = 0.0;

    void add(const Input &input)
    {
        cv::Mat theirs, ours;
        strokes(input); // the first call pays for the start of the threads
        ownSeconds += seconds([&] { return strokes(input); }, &ours);
        grabCutSeconds += seconds([&] { return grabCut(input); }, &theirs);
        ownIou += engine::intersectionOverUnion(ours, input.truth);
        grabCutIou += engine::intersectionOverUnion(theirs, input.truth);
    }
};

// One clip alone says little about the quality, so this goes through all of them.
void printRatio(const std::string &folder, const std::vector<std::string> &names, int height)
{
    Comparison sum;
    for (const std::string &name : names)
        sum.add(Input(folder + "/" + name, height));
    const double count = double(names.size());
    std::printf(
        "strokes to matte at height %d, mean of %d clips: %.3f s, IoU %.3f; grabCut full frame, "
        "%d rounds: %.3f s, IoU %.3f; ratio %.1f\n",
        height,
        int(names.size()),
        sum.ownSeconds / count,
        sum.ownIou / count,
        grabCutRounds,
        sum.grabCutSeconds / count,
        sum.grabCutIou / count,
        sum.grabCutSeconds / sum.ownSeconds);
}

template<typename Function>
void add(const std::string &name, const Input &input, const Function &function)
{
    const std::string full = name + "/" + std::to_string(input.first.rows);
    benchmark::RegisterBenchmark(full.c_str(),
                                 [&input, function](benchmark::State &state) {
                                     for (auto _ : state)
                                         function(input);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->MinTime(0.3);
}

void addPreparation(const Input &input)
{
    add("features", input, [](const Input &in) { engine::computeFeatures(in.first); });
    add("motion", input, [](const Input &in) {
        const cv::Size size = in.features().size();
        const cv::Mat &before = in.earlier.data()->motionImage;
        engine::measureMotion(before, in.later.data()->motionImage, size);
    });
    add("prepare", input, [](const Input &in) { in.tracker.prepare(in.earlier, in.second); });
}

void addModels(const Input &input)
{
    add("colour model", input, [](const Input &in) {
        engine::ColorModel model;
        model.learn(in.features().lab, in.coarse, ~in.coarse);
        benchmark::DoNotOptimize(model.logits(in.features().lab));
    });
    add("geodesic distance", input, [](const Input &in) {
        engine::geodesicDistance(in.features().lab, in.coarse);
    });
    add("network evaluation", input, [](const Input &in) {
        in.appearance.networkLogits(in.features(), in.everything());
    });
    add("appearance truth", input, [](const Input &in) {
        engine::AppearanceModel().learnTruth(in.features(), in.coarse);
    });
    add("appearance update", input, [](const Input &in) {
        engine::AppearanceModel copy = in.appearance;
        copy.adapt(in.features(), in.coarse, cv::Mat::zeros(in.coarse.size(), CV_8U));
    });
}

void addDecision(const Input &input)
{
    add("warp", input, [](const Input &in) {
        engine::warpMatte(in.share, in.later.data()->transition.motion);
    });
    add("label transfer", input, [](const Input &in) {
        const engine::Descriptors &before = in.earlier.data()->descriptors;
        const engine::Descriptors &after = in.later.data()->descriptors;
        engine::transferLabels(before, in.share, after, in.everything(), {0, 0});
    });
    add("evidence", input, [](const Input &in) {
        const engine::FrameData &later = *in.later.data();
        engine::gatherEvidence(
            *in.earlier.data(), in.share, later, later.transition.motion, in.appearance);
    });
    add("graph cut", input, [](const Input &in) {
        engine::cutGraph((in.share - 0.5) * 6.0, in.earlier.data()->features.lab, {});
    });
    add("refinement", input, [](const Input &in) { engine::refineMatte(in.first, in.coarse); });
}

void addWhole(const Input &input)
{
    add("grabCut full frame", input, [](const Input &in) { grabCut(in); });
    add("strokes to matte", input, [](const Input &in) { strokes(in); });
    add("start and advance", input, [](const Input &in) {
        engine::ObjectTracker tracker;
        tracker.start(in.earlier, in.truth);
        benchmark::DoNotOptimize(tracker.advance(in.later));
    });
}

// Takes --data=DIR out of the arguments.
std::string takeData(int *argc, char **argv)
{
    constexpr char option[] = "--data=";
    std::string folder;
    int kept = 0;
    for (int i = 0; i < *argc; ++i) {
        if (std::strncmp(argv[i], option, sizeof option - 1) == 0)
            folder = argv[i] + sizeof option - 1;
        else
            argv[kept++] = argv[i];
    }
    *argc = kept;
    return folder;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string folder = takeData(&argc, argv);
    const std::vector<std::string> names = bench::clipNames(folder);
    if (names.empty()) {
        std::printf("skipped: no clips; give their folder with --data=DIR\n");
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    for (int height : {480, 1080})
        printRatio(folder, names, height);
    const Input standard(folder + "/" + names.front(), 0);
    const Input large(folder + "/" + names.front(), 1080);
    for (const Input *input : {&standard, &large}) {
        addPreparation(*input);
        addModels(*input);
        addDecision(*input);
        addWhole(*input);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
