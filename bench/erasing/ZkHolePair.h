// Clips with holes whose content is known: the object of one clip cut out of another one.
#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <vector>

namespace zk::bench {

struct HolePair
{
    std::string name; // "shown <- cut"
    std::vector<cv::Mat> truth; // CV_8UC3
    std::vector<cv::Mat> frames; // the same with grey holes
    std::vector<cv::Mat> holes; // CV_8UC1: the other clip's object, grown by 5 pixels
    // CV_8UC1: hole pixels more than 5 pixels off the clip's own object.
    std::vector<cv::Mat> background;
};

// The five pairs that are measured, clip names of the data folder.
struct PairNames
{
    std::string shown;
    std::string cut;
};
extern const std::vector<PairNames> measuredPairs;

// The first frames of a pair; no frames when a clip is missing. height 0: as stored.
HolePair readPair(const std::string &folder, const PairNames &names, int frames, int height);

} // namespace zk::bench
