#include "ZkInpainter.h"

#include "../ZkFrameFeatures.h"
#include "../ZkMaskTools.h"
#include "ZkDiffusion.h"
#include "ZkPatchLevel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>
#include <vector>

namespace zk::engine {

namespace {

constexpr int smallestSide = 24; // of the coarsest level
constexpr int mostLevels = 7;
// Pixels: a hole whose middle is nearer than this needs no coarser level.
constexpr double thinHole = 4.0;

// The picture with the local strength of texture as a fourth channel, so that a meadow is not
// continued by a smooth wall of the same green.
cv::Mat withTexture(const cv::Mat &picture, const cv::Mat &hole)
{
    cv::Mat filled = picture.clone();
    fillSmoothly(&filled, hole);
    cv::Mat gray, dx, dy, texture, result;
    cv::cvtColor(filled, gray, cv::COLOR_RGB2GRAY);
    cv::Sobel(gray, dx, CV_16S, 1, 0);
    cv::Sobel(gray, dy, CV_16S, 0, 1);
    cv::add(cv::abs(dx), cv::abs(dy), texture, cv::noArray(), CV_16S);
    texture.convertTo(texture, CV_8U, 0.25);
    cv::blur(texture, texture, {5, 5});
    const cv::Mat sources[] = {filled, texture};
    result.create(picture.size(), CV_8UC4);
    const int order[] = {0, 0, 1, 1, 2, 2, 3, 3};
    cv::mixChannels(sources, 2, &result, 1, order, 4);
    return result;
}

struct Sized
{
    cv::Mat picture; // CV_8UC4
    cv::Mat hole;
};

// Half the size, each pixel the mean of its known parts.
Sized halved(const Sized &fine)
{
    const cv::Size size((fine.hole.cols + 1) / 2, (fine.hole.rows + 1) / 2);
    Sized coarse {cv::Mat(size, CV_8UC4), cv::Mat(size, CV_8U)};
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            cv::Vec4i known = cv::Vec4i::all(0), all = known;
            int knownCount = 0, allCount = 0;
            for (int v = 2 * y; v < std::min(2 * y + 2, fine.hole.rows); ++v) {
                for (int u = 2 * x; u < std::min(2 * x + 2, fine.hole.cols); ++u) {
                    const cv::Vec4i pixel = fine.picture.at<cv::Vec4b>(v, u);
                    all += pixel;
                    ++allCount;
                    if (!fine.hole.at<uchar>(v, u)) {
                        known += pixel;
                        ++knownCount;
                    }
                }
            }
            const bool isHole = 2 * knownCount < allCount;
            const cv::Vec4i sum = isHole ? all : known;
            const int count = isHole ? allCount : knownCount;
            for (int c = 0; c < 4; ++c)
                coarse.picture.at<cv::Vec4b>(y, x)[c] = uchar((sum[c] + count / 2) / count);
            coarse.hole.at<uchar>(y, x) = isHole ? 255 : 0;
        }
    }
    return coarse;
}

double depthOf(const cv::Mat &hole)
{
    cv::Mat distance;
    double deepest = 0.0;
    cv::distanceTransform(hole, distance, cv::DIST_L2, cv::DIST_MASK_3);
    cv::minMaxLoc(distance, nullptr, &deepest);
    return deepest;
}

std::vector<Sized> pyramid(const Sized &finest)
{
    std::vector<Sized> sizes {finest};
    while (int(sizes.size()) < mostLevels && depthOf(sizes.back().hole) > thinHole
           && std::min(sizes.back().hole.cols, sizes.back().hole.rows) >= 2 * smallestSide)
        sizes.push_back(halved(sizes.back()));
    // A level whose patches all touch the hole has nothing to offer.
    while (sizes.size() > 1 && !PatchLevel(sizes.back().picture, sizes.back().hole).hasSources())
        sizes.pop_back();
    return sizes;
}

int roundsAt(int level, int coarsest)
{
    return level == coarsest ? 8 : level > 0 ? 4 : 2;
}

std::unique_ptr<PatchLevel> search(const Sized &finest, const std::function<bool()> &stopped)
{
    const std::vector<Sized> sizes = pyramid(finest);
    const int coarsest = int(sizes.size()) - 1;
    std::unique_ptr<PatchLevel> result;
    for (int i = coarsest; i >= 0 && !stopped(); --i) {
        const Sized &sized = sizes[std::size_t(i)];
        auto level = std::make_unique<PatchLevel>(sized.picture, sized.hole);
        if (!level->hasSources())
            return nullptr;
        if (result)
            level->startFrom(*result, std::uint32_t(77 + i));
        else
            level->startAnyhow(std::uint32_t(77 + i));
        for (int round = 0; round < roundsAt(i, coarsest); ++round)
            level->improve(stopped);
        result = std::move(level);
    }
    return result;
}

// Where to look for patches: around the hole, or everywhere when that is too little.
cv::Rect searchBox(const cv::Mat &hole)
{
    const cv::Rect box = cv::boundingRect(hole);
    const int margin = std::max(hole.rows / 8, std::max(box.width, box.height) * 3 / 4);
    return grownBox(box, {margin, margin}, hole.size());
}

bool fill(cv::Mat *picture,
          const cv::Mat &hole,
          int workingPixels,
          const std::function<bool()> &stopped)
{
    const Sized whole {withTexture(*picture, hole), hole};
    const cv::Size size = workingSize(hole.size(), workingPixels);
    Sized small = whole;
    if (size != hole.size()) {
        cv::Mat covered;
        cv::resize(whole.picture, small.picture, size, 0, 0, cv::INTER_AREA);
        hole.convertTo(covered, CV_32F);
        cv::resize(covered, covered, size, 0, 0, cv::INTER_AREA);
        small.hole = covered > 0;
    }
    std::unique_ptr<PatchLevel> level = search(small, stopped);
    if (level && size != hole.size()) {
        auto large = std::make_unique<PatchLevel>(whole.picture, hole);
        if (large->hasSources())
            large->startFrom(*level, 7);
        else
            large.reset();
        level = std::move(large);
    }
    cv::Mat colors;
    cv::cvtColor(level ? level->picture() : whole.picture, colors, cv::COLOR_RGBA2RGB);
    colors.copyTo(*picture, hole);
    return level != nullptr;
}

} // namespace

Inpainter::~Inpainter() = default;

PatchInpainter::PatchInpainter(int workingPixels)
    : m_workingPixels(workingPixels)
{ }

bool PatchInpainter::inpaint(cv::Mat *picture,
                             const cv::Mat &hole,
                             const std::function<bool()> &stopped) const
{
    const int unknown = cv::countNonZero(hole);
    if (unknown == 0 || unknown == int(hole.total()))
        return unknown == 0;
    const cv::Rect box = searchBox(hole);
    cv::Mat part = (*picture)(box);
    const cv::Mat holeHere = hole(box).clone();
    // The share of the working area that the box has.
    const int pixels = int(double(m_workingPixels) * box.area() / double(hole.total())) + 1;
    const int here = hole.total() > std::size_t(m_workingPixels) ? pixels : box.area();
    fill(&part, holeHere, here, stopped);
    return true;
}

} // namespace zk::engine
