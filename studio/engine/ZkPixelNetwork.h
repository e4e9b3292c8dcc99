// A tiny perceptron that learns, while the user works, to tell the object's pixels from the others.
#pragma once

#include "ZkEngineGlobal.h"
#include "ZkFrameFeatures.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <vector>

namespace zk::engine {

struct PixelNetworkOptions
{
    int hidden1 = 32;
    int hidden2 = 16;
    int batch = 32;
    double learningRate = 5e-3;
    double weightDecay = 1e-3;
    double limit = 8.0; // largest absolute logit
    std::uint64_t seed = 0x5eed;
    int inputs = Feature::count; // planes of the features that it is used with
};

// Pixels to learn from; the three parts run in step.
struct ZKENGINE_EXPORT TrainingSet
{
    cv::Mat features; // CV_32FC1, one row of values per sample, one per plane of the features
    std::vector<float> targets; // 1 = object, 0 = background
    std::vector<float> weights; // importance of the sample

    int size() const { return features.rows; }
    void append(const TrainingSet &other);
    // Adds the pixels (indices into the working copy, row by row).
    void
    append(const FrameFeatures &from, const std::vector<int> &pixels, float target, float weight);
};

// One input per plane of the features, two hidden layers, one output, trained with Adam on the logistic loss.
// Deterministic: the same samples in the same order give the same network.
class ZKENGINE_EXPORT PixelNetwork
{
public:
    explicit PixelNetwork(const PixelNetworkOptions &options = {});

    bool isTrained() const { return m_trained; }
    // Goes through the set this many times. The first call also fixes the scale of the inputs.
    void train(const TrainingSet &set, int epochs, double rateFactor = 1.0);
    // log odds of the object, CV_32FC1 of the size of the area; area lies inside the working copy.
    cv::Mat logits(const FrameFeatures &features, const cv::Rect &area) const;

private:
    // One fully connected layer; everything row-major, outputs x inputs.
    struct Layer
    {
        int inputs = 0;
        int outputs = 0;
        std::vector<float> weights, bias;
        std::vector<float> weightGradient, biasGradient;
        std::vector<float> weightMean, biasMean, weightSquare, biasSquare;

        void initialise(int inputCount, int outputCount, cv::RNG &random);
        void clearGradient();
        void step(float rate, float decay, int steps);
    };
    struct Activations;

    void fixScale(const cv::Mat &features);
    float forward(const float *features, Activations &at) const;
    void backward(float error, const Activations &at, Activations &gradient);
    void trainBatch(const TrainingSet &set, const int *order, int count, double rate);
    void evaluateBlock(const uchar *const *inputs, int count, float *out) const;

    PixelNetworkOptions m_options;
    cv::RNG m_random;
    bool m_trained = false;
    int m_steps = 0;
    std::vector<float> m_mean;
    std::vector<float> m_scale;
    Layer m_layers[3];
};

} // namespace zk::engine
