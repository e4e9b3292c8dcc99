// zk_engine_quality DIR [--height PIXELS] [--clips A,B] [--only strokes|tracking|forward]
// zk_engine_quality --drawn COUNT
#include "ZkClip.h"
#include "ZkDrawnFootage.h"
#include "ZkQuality.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using zk::bench::StrokeQuality;
using zk::bench::TrackingQuality;

struct Arguments
{
    std::string folder;
    std::string only;
    std::vector<std::string> clips;
    int drawn = 0; // scenes that are drawn by chance, in place of clips
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
        else if (argument == "--only" && hasValue)
            arguments->only = argv[++i];
        else if (argument == "--drawn" && hasValue)
            arguments->drawn = std::atoi(argv[++i]);
        else if (argument[0] != '-' && arguments->folder.empty())
            arguments->folder = argument;
        else
            return false;
    }
    const std::string &only = arguments->only;
    const bool isKnown =
        only.empty() || only == "strokes" || only == "tracking" || only == "forward";
    return isKnown && (!arguments->folder.empty() || arguments->drawn > 0);
}

// Means over the clips of what each of them gave, printed clip by clip.
class Table
{
public:
    explicit Table(const std::vector<const char *> &columns)
        : m_sums(columns.size(), 0.0)
    {
        std::printf("\n%-20s", "clip");
        for (const char *column : columns)
            std::printf(" %11s", column);
        std::printf("\n");
    }
    void add(const std::string &name, const std::vector<double> &values)
    {
        print(name, values, 1.0);
        for (std::size_t i = 0; i < values.size(); ++i)
            m_sums[i] += values[i];
        ++m_count;
    }
    void close() const { print("mean", m_sums, 1.0 / m_count); }

private:
    static void print(const std::string &name, const std::vector<double> &values, double share)
    {
        std::printf("%-20s", name.c_str());
        for (double value : values)
            std::printf(" %11.3f", value * share);
        std::printf("\n");
        std::fflush(stdout);
    }

    std::vector<double> m_sums;
    int m_count = 0;
};

void measureStrokes(const Arguments &arguments)
{
    zk::bench::QualityOptions large = arguments.options;
    large.height = 1080;
    Table table({"one stroke", "3 more", "s", "s 1080p", "grabCut", "s"});
    for (const std::string &name : arguments.clips) {
        const std::string clip = arguments.folder + "/" + name;
        const StrokeQuality q = zk::bench::measureStrokes(clip, arguments.options);
        const StrokeQuality l = zk::bench::measureStrokes(clip, large);
        table.add(name, {q.first, q.corrected, q.seconds, l.seconds, q.cut, q.cutSeconds});
    }
    table.close();
}

void measureTracking(const Arguments &arguments)
{
    Table table({"forward",
                 "at end",
                 "conf corr",
                 "both ways",
                 "strokes",
                 "1 corrected",
                 "s/frame",
                 "flow",
                 "s/frame"});
    for (const std::string &name : arguments.clips) {
        const TrackingQuality q =
            zk::bench::measureTracking(arguments.folder + "/" + name, arguments.options);
        table.add(name,
                  {q.forward,
                   q.atEnd,
                   q.confidence,
                   q.bothWays,
                   q.fromStrokes,
                   q.corrected,
                   q.secondsPerFrame,
                   q.warped,
                   q.warpedSeconds});
    }
    table.close();
}

void addForward(const std::string &name, const TrackingQuality &quality, Table *table)
{
    table->add(name, {quality.forward, quality.atEnd, quality.confidence, quality.secondsPerFrame});
}

void measureForward(const Arguments &arguments)
{
    Table table({"forward", "at end", "conf corr", "s/frame"});
    for (const std::string &name : arguments.clips) {
        const std::string clip = arguments.folder + "/" + name;
        addForward(name, zk::bench::measureForward(clip, arguments.options), &table);
    }
    table.close();
}

void measureDrawn(const Arguments &arguments)
{
    Table table({"forward", "at end", "conf corr", "s/frame"});
    for (int i = 0; i < arguments.drawn; ++i) {
        const zk::bench::DrawnFootage drawn(i);
        addForward(drawn.name(), zk::bench::measureDrawn(drawn, arguments.options), &table);
    }
    table.close();
}

} // namespace

int main(int argc, char **argv)
{
    Arguments arguments;
    if (!parse(argc, argv, &arguments)) {
        std::fprintf(stderr,
                     "usage: %s DIR [--height PIXELS] [--clips A,B] "
                     "[--only strokes|tracking|forward]\n"
                     "       %s --drawn COUNT\n",
                     argv[0],
                     argv[0]);
        return 2;
    }
    if (arguments.drawn > 0) {
        measureDrawn(arguments);
        return 0;
    }
    if (arguments.clips.empty())
        arguments.clips = zk::bench::clipNames(arguments.folder);
    if (arguments.clips.empty()) {
        std::fprintf(stderr, "no clips in %s\n", arguments.folder.c_str());
        return 1;
    }
    if (arguments.only.empty() || arguments.only == "strokes")
        measureStrokes(arguments);
    if (arguments.only.empty() || arguments.only == "tracking")
        measureTracking(arguments);
    if (arguments.only == "forward")
        measureForward(arguments);
    return 0;
}
