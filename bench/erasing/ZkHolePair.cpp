#include "ZkHolePair.h"

#include "../engine/ZkClip.h"

#include <opencv2/imgproc.hpp>

namespace zk::bench {

namespace {

cv::Mat grown(const cv::Mat &mask, double pixels)
{
    const int side = 2 * cvRound(pixels) + 1;
    cv::Mat result;
    cv::dilate(mask > 127, result, cv::getStructuringElement(cv::MORPH_ELLIPSE, {side, side}));
    return result;
}

} // namespace

const std::vector<PairNames> measuredPairs = {{"camel", "horsejump-high"},
                                              {"car-roundabout", "soapbox"},
                                              {"parkour", "camel"},
                                              {"blackswan", "car-shadow"},
                                              {"soapbox", "parkour"}};

HolePair readPair(const std::string &folder, const PairNames &names, int frames, int height)
{
    HolePair pair;
    pair.name = std::string(names.shown) + " <- " + names.cut;
    Clip shown(folder + "/" + names.shown, height);
    Clip cut(folder + "/" + names.cut, height);
    for (int i = 0; i < frames; ++i) {
        const cv::Mat truth = shown.nextFrame();
        const cv::Mat object = cut.mask(i), own = shown.mask(i);
        if (truth.empty() || object.empty() || own.empty() || object.size() != truth.size())
            break;
        const double five = 5.0 * truth.rows / 480.0;
        cv::Mat frame = truth.clone();
        pair.holes.push_back(grown(object, five));
        frame.setTo(cv::Scalar::all(127), pair.holes.back());
        pair.background.push_back(pair.holes.back() & (grown(own, five) == 0));
        pair.truth.push_back(truth);
        pair.frames.push_back(frame);
    }
    return pair;
}

} // namespace zk::bench
