// zk_erase_bench --data=DIR [--height PIXELS] [--frames N] [--pair SHOWN,CUT] [--threads N]
//                [--no-baselines] [--dump DIR]
#include "ZkEraseMeasures.h"

#include <erasing/ZkObjectEraser.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/photo.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

namespace {

using zk::bench::EraseMeasures;
using zk::bench::HolePair;
using Frames = std::vector<cv::Mat>;
using Method = std::function<Frames(const HolePair &)>;

struct Arguments
{
    std::string folder;
    std::string dump;
    int height = 480;
    int frames = 25;
    std::vector<zk::bench::PairNames> pairs;
    int threads = 0;
    bool baselines = true;
};

class PairClip : public zk::engine::EraseSource, public zk::engine::EraseSink
{
public:
    explicit PairClip(const HolePair &pair)
        : m_pair(pair)
    { }

    int frameCount() const override { return int(m_pair.frames.size()); }
    bool read(int index, cv::Mat *picture, cv::Mat *mask) override
    {
        *picture = m_pair.frames[std::size_t(index)];
        *mask = m_pair.holes[std::size_t(index)];
        return true;
    }
    bool write(int, const cv::Mat &picture) override
    {
        result.push_back(picture);
        return true;
    }

    Frames result;

private:
    const HolePair &m_pair;
};

Frames ours(const HolePair &pair, int threads, zk::engine::EraseTimes *times)
{
    PairClip clip(pair);
    zk::engine::EraserOptions options;
    options.threads = threads;
    options.grow = 0.0; // the holes are grown already
    zk::engine::ObjectEraser(options).run(clip, clip, {}, times);
    return clip.result;
}

Frames inpainted(const HolePair &pair, int method)
{
    Frames result(pair.frames.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        cv::inpaint(pair.frames[i], pair.holes[i], result[i], 5.0, method);
    return result;
}

void print(const std::string &pair, const char *method, const EraseMeasures &m)
{
    std::printf("%-28s %-8s %7.2f %7.2f %7.3f %8.2f %8.2f %9.3f\n",
                pair.c_str(),
                method,
                m.psnr,
                m.psnrBackground,
                m.ssim,
                m.flicker,
                m.flickerOfTruth,
                m.seconds);
    std::fflush(stdout);
}

void dump(const std::string &folder, const HolePair &pair, const Frames &result, const char *method)
{
    for (std::size_t i = 0; i < result.size(); i += 6) {
        cv::Mat sheet, bgr;
        cv::vconcat(std::vector<cv::Mat> {pair.frames[i], result[i], pair.truth[i]}, sheet);
        cv::Mat channels[3];
        cv::split(sheet, channels);
        cv::merge(std::vector<cv::Mat> {channels[2], channels[1], channels[0]}, bgr);
        const std::string clip = pair.name.substr(0, pair.name.find(' '));
        cv::imwrite(folder + "/" + clip + "-" + method + "-" + std::to_string(i) + ".png", bgr);
    }
}

void addPair(const std::string &names, std::vector<zk::bench::PairNames> *pairs)
{
    const std::size_t comma = names.find(',');
    if (comma != std::string::npos)
        pairs->push_back({names.substr(0, comma), names.substr(comma + 1)});
}

bool parse(int argc, char **argv, Arguments *arguments)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument.rfind("--data=", 0) == 0)
            arguments->folder = argument.substr(7);
        else if (argument == "--no-baselines")
            arguments->baselines = false;
        else if (argument == "--height" && hasValue)
            arguments->height = std::atoi(argv[++i]);
        else if (argument == "--frames" && hasValue)
            arguments->frames = std::atoi(argv[++i]);
        else if (argument == "--pair" && hasValue)
            addPair(argv[++i], &arguments->pairs);
        else if (argument == "--threads" && hasValue)
            arguments->threads = std::atoi(argv[++i]);
        else if (argument == "--dump" && hasValue)
            arguments->dump = argv[++i];
        else
            return false;
    }
    return !arguments->folder.empty();
}

} // namespace

int main(int argc, char **argv)
{
    Arguments arguments;
    if (!parse(argc, argv, &arguments)) {
        std::fprintf(stderr,
                     "usage: %s --data=DIR [--height PIXELS] [--frames N] [--pair SHOWN,CUT]... "
                     "[--threads N] [--no-baselines] [--dump DIR]\n",
                     argv[0]);
        return 2;
    }
    zk::engine::EraseTimes times;
    int frames = 0;
    std::vector<std::pair<const char *, Method>> methods = {
        {"eraser", [&](const HolePair &pair) { return ours(pair, arguments.threads, &times); }}};
    if (arguments.baselines) {
        methods.push_back(
            {"telea", [](const HolePair &p) { return inpainted(p, cv::INPAINT_TELEA); }});
        methods.push_back({"ns", [](const HolePair &p) { return inpainted(p, cv::INPAINT_NS); }});
    }
    std::printf("%-28s %-8s %7s %7s %7s %8s %8s %9s\n",
                "pair",
                "method",
                "PSNR",
                "bg",
                "SSIM",
                "flicker",
                "(truth)",
                "s/frame");
    std::vector<EraseMeasures> sums(methods.size());
    int measured = 0;
    if (arguments.pairs.empty())
        arguments.pairs = zk::bench::measuredPairs;
    for (const zk::bench::PairNames &names : arguments.pairs) {
        const HolePair pair =
            zk::bench::readPair(arguments.folder, names, arguments.frames, arguments.height);
        if (pair.frames.empty()) {
            std::fprintf(stderr, "no frames for %s\n", pair.name.c_str());
            return 1;
        }
        ++measured;
        frames += int(pair.frames.size());
        const std::vector<cv::Mat> motion = zk::bench::trueMotion(pair);
        for (std::size_t i = 0; i < methods.size(); ++i) {
            const auto start = std::chrono::steady_clock::now();
            const Frames result = methods[i].second(pair);
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
            EraseMeasures measures = zk::bench::measureErasing(pair, motion, result);
            measures.seconds = taken.count() / double(pair.frames.size());
            print(pair.name, methods[i].first, measures);
            sums[i] += measures;
            if (!arguments.dump.empty())
                dump(arguments.dump, pair, result, methods[i].first);
        }
    }
    for (std::size_t i = 0; i < methods.size(); ++i)
        print("mean", methods[i].first, sums[i] * (1.0 / std::max(1, measured)));
    std::printf(
        "eraser, seconds per frame: reading %.3f, motion %.3f, painting %.3f, making up %.3f, "
        "writing %.3f\n",
        times.reading / frames,
        times.motion / frames,
        times.painting / frames,
        times.makingUp / frames,
        times.writing / frames);
    return 0;
}
