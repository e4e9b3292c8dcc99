// How likely a colour is to belong to the object: two smoothed Lab histograms.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

#include <vector>

namespace zk::engine {

struct ColorModelOptions
{
    int smoothing = 2; // rounds of smoothing over neighbouring bins
    double prior = 2e-4; // share of a bin that nobody has seen; bounds the odds of rare colours
    double limit = 5.0; // largest absolute logit
};

class ZKENGINE_EXPORT ColorModel
{
public:
    explicit ColorModel(const ColorModelOptions &options = {});

    // lab: CV_8UC3. object, background: CV_8UC1 weights of the pixels (0 = not used).
    void learn(const cv::Mat &lab, const cv::Mat &object, const cv::Mat &background);
    // Mixes what was learnt from another picture in: rate is the share of the new one, 0 .. 1.
    void update(const cv::Mat &lab, const cv::Mat &object, const cv::Mat &background, double rate);
    bool isEmpty() const { return m_logits.empty(); }

    // log odds of the object for every pixel, CV_32FC1; positive = object.
    cv::Mat logits(const cv::Mat &lab) const;

private:
    void rebuild();

    ColorModelOptions m_options;
    std::vector<float> m_object;
    std::vector<float> m_background;
    std::vector<float> m_logits;
};

} // namespace zk::engine
