// zk_engine_quality DIR [--height PIXELS] [--clips A,B] [--no-strokes]
#include "ZkClip.h"
#include "ZkQuality.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace {

struct Arguments
{
    std::string folder;
    std::vector<std::string> clips;
    zk::bench::QualityOptions options;
};

std::vector<std::string> split(const std::string &list)
{
    std::vector<std::string> parts;
    std::istringstream stream(list);
    for (std::string part; std::getline(stream, part, ',');)
        parts.push_back(part);
    return parts;
}

bool parse(int argc, char **argv, Arguments *arguments)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--height" && hasValue)
            arguments->options.height = std::atoi(argv[++i]);
        else if (argument == "--clips" && hasValue)
            arguments->clips = split(argv[++i]);
        else if (argument == "--no-strokes")
            arguments->options.fromStrokes = false;
        else if (argument[0] != '-' && arguments->folder.empty())
            arguments->folder = argument;
        else
            return false;
    }
    return !arguments->folder.empty();
}

void print(const zk::bench::ClipQuality &q)
{
    std::printf("%-20s %10.3f %10.3f %8.3f %8.3f %10.3f %10.3f\n",
                q.name.c_str(),
                q.strokeIou,
                q.strokeSeconds,
                q.jFromTruth,
                q.jAtEnd,
                q.jFromStrokes,
                q.secondsPerFrame);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    Arguments arguments;
    if (!parse(argc, argv, &arguments)) {
        std::fprintf(
            stderr, "usage: %s DIR [--height PIXELS] [--clips A,B] [--no-strokes]\n", argv[0]);
        return 2;
    }
    if (arguments.clips.empty())
        arguments.clips = zk::bench::clipNames(arguments.folder);
    if (arguments.clips.empty()) {
        std::fprintf(stderr, "no clips in %s\n", arguments.folder.c_str());
        return 1;
    }
    std::printf("%-20s %10s %10s %8s %8s %10s %10s\n",
                "clip",
                "stroke IoU",
                "stroke s",
                "J truth",
                "J end",
                "J strokes",
                "s/frame");
    zk::bench::ClipQuality mean;
    mean.name = "mean";
    for (const std::string &name : arguments.clips) {
        const auto quality = zk::bench::measureQuality(arguments.folder, name, arguments.options);
        print(quality);
        const double share = 1.0 / double(arguments.clips.size());
        mean.strokeIou += share * quality.strokeIou;
        mean.strokeSeconds += share * quality.strokeSeconds;
        mean.jFromTruth += share * quality.jFromTruth;
        mean.jAtEnd += share * quality.jAtEnd;
        mean.jFromStrokes += share * quality.jFromStrokes;
        mean.secondsPerFrame += share * quality.secondsPerFrame;
    }
    print(mean);
    return 0;
}
