// zk_box_bench [--scenes N]: from a box to the object, on scenes drawn by chance. Means of intersection
// over union, and of the share of the object that is found.
#include "ZkDrawnScene.h"

#include <ZkBoxSegmenter.h>
#include <ZkMatte.h>

#include <opencv2/imgproc.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using zk::bench::DrawnScene;
using zk::bench::ObjectKind;

struct Method
{
    const char *name;
    double middle;
    bool looksAround; // at frames before and after
};

const Method methods[] = {
    {"alone", 0.0, false},
    {"middle", zk::engine::BoxSegmenterOptions().middle, false},
    {"motion", 0.0, true},
    {"motion, middle", zk::engine::BoxSegmenterOptions().middle, true},
};

struct Kind
{
    const char *name;
    ObjectKind kind;
};

const Kind kinds[] = {{"compact", ObjectKind::Compact},
                      {"with limbs", ObjectKind::Limbs},
                      {"partly alike", ObjectKind::Alike}};

struct Sums
{
    double overlap = 0.0;
    double found = 0.0;
    double seconds = 0.0;
};

// As a hand draws it: a little larger than the object.
cv::Rect boxAround(const cv::Mat &mask, cv::RNG &random)
{
    const cv::Rect tight = cv::boundingRect(mask >= 128);
    const auto slack = [&] { return random.uniform(0, 11); };
    const cv::Point first = tight.tl() - cv::Point(slack(), slack());
    return {first, tight.br() + cv::Point(slack(), slack())};
}

void measure(const Method &method, const DrawnScene &scene, const cv::Rect &box, Sums *sums)
{
    const cv::Mat frame = scene.frame(0), truth = scene.mask(0);
    std::vector<cv::Mat> neighbours;
    if (method.looksAround)
        neighbours = {scene.frame(-1), scene.frame(1)};
    zk::engine::BoxSegmenterOptions options;
    options.middle = method.middle;
    const auto start = std::chrono::steady_clock::now();
    const cv::Mat matte = zk::engine::segmentBox(frame, box, options, neighbours);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    sums->seconds += taken.count();
    sums->overlap += zk::engine::intersectionOverUnion(matte, truth);
    sums->found += double(cv::countNonZero((matte >= 128) & (truth >= 128)))
        / double(cv::countNonZero(truth >= 128));
}

} // namespace

int main(int argc, char **argv)
{
    const bool hasCount = argc == 3 && std::string(argv[1]) == "--scenes";
    const int scenes = hasCount ? std::atoi(argv[2]) : 40;
    if ((argc > 1 && !hasCount) || scenes < 1) {
        std::fprintf(stderr, "usage: %s [--scenes N]\n", argv[0]);
        return 2;
    }
    std::printf("%-14s %-16s %6s %6s %9s\n", "object", "method", "IoU", "found", "s");
    for (const Kind &kind : kinds) {
        Sums sums[std::size(methods)];
        for (int i = 0; i < scenes; ++i) {
            const DrawnScene scene(kind.kind, std::uint64_t(i));
            cv::RNG random(std::uint64_t(i) + 1);
            const cv::Rect box = boxAround(scene.mask(0), random);
            for (std::size_t k = 0; k < std::size(methods); ++k)
                measure(methods[k], scene, box, &sums[k]);
        }
        for (std::size_t k = 0; k < std::size(methods); ++k)
            std::printf("%-14s %-16s %6.3f %6.3f %9.3f\n",
                        kind.name,
                        methods[k].name,
                        sums[k].overlap / scenes,
                        sums[k].found / scenes,
                        sums[k].seconds / scenes);
        std::fflush(stdout);
    }
    return 0;
}
