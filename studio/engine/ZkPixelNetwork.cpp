#include "ZkPixelNetwork.h"

#include "ZkVectorised.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zk::engine {

namespace {

constexpr int blockSize = 64; // pixels that go through the layers together, so that loops vectorise

ZKENGINE_VECTORISED
void applyLayer(const float *weights,
                const float *bias,
                int inputs,
                int outputs,
                const float *in,
                float *out,
                float floor)
{
    for (int o = 0; o < outputs; ++o) {
        float sum[blockSize];
        for (int i = 0; i < blockSize; ++i)
            sum[i] = bias[o];
        for (int k = 0; k < inputs; ++k) {
            const float weight = weights[o * inputs + k];
            const float *row = in + k * blockSize;
            for (int i = 0; i < blockSize; ++i)
                sum[i] += weight * row[i];
        }
        for (int i = 0; i < blockSize; ++i)
            out[o * blockSize + i] = std::max(sum[i], floor);
    }
}

ZKENGINE_VECTORISED
float dot(const float *a, const float *b, int count)
{
    float parts[8] = {};
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        for (int k = 0; k < 8; ++k)
            parts[k] += a[i + k] * b[i + k];
    }
    float sum = 0.0f;
    for (; i < count; ++i)
        sum += a[i] * b[i];
    for (float part : parts)
        sum += part;
    return sum;
}

ZKENGINE_VECTORISED
void addScaled(float *to, const float *from, float factor, int count)
{
    for (int i = 0; i < count; ++i)
        to[i] += factor * from[i];
}

struct Adam
{
    float rate;
    float decay;
    float meanCorrection;
    float squareCorrection;
};

ZKENGINE_VECTORISED
void adamStep(float *value, const float *gradient, float *mean, float *square, int count, Adam adam)
{
    for (int i = 0; i < count; ++i) {
        mean[i] += 0.1f * (gradient[i] - mean[i]);
        square[i] += 0.01f * (gradient[i] * gradient[i] - square[i]);
        const float direction =
            mean[i] * adam.meanCorrection / (std::sqrt(square[i] * adam.squareCorrection) + 1e-6f);
        value[i] -= adam.rate * (direction + adam.decay * value[i]);
    }
}

} // namespace

void TrainingSet::append(const TrainingSet &other)
{
    if (other.size() == 0)
        return;
    features.push_back(other.features);
    targets.insert(targets.end(), other.targets.begin(), other.targets.end());
    weights.insert(weights.end(), other.weights.begin(), other.weights.end());
}

void TrainingSet::append(const FrameFeatures &from,
                         const std::vector<int> &pixels,
                         float target,
                         float weight)
{
    if (pixels.empty())
        return;
    const int first = features.rows;
    cv::Mat rows(int(pixels.size()), from.planes.rows, CV_32F);
    for (int feature = 0; feature < rows.cols; ++feature) {
        const uchar *plane = from.planes.ptr(feature);
        for (int i = 0; i < rows.rows; ++i)
            rows.ptr<float>(i)[feature] = plane[pixels[i]];
    }
    features.push_back(rows);
    targets.resize(first + pixels.size(), target);
    weights.resize(first + pixels.size(), weight);
}

void PixelNetwork::Layer::initialise(int inputCount, int outputCount, cv::RNG &random)
{
    inputs = inputCount;
    outputs = outputCount;
    weights.resize(inputs * outputs);
    const double spread = std::sqrt(2.0 / inputs);
    for (float &weight : weights)
        weight = float(random.gaussian(spread));
    bias.assign(outputs, 0.0f);
    weightGradient = weightMean = weightSquare = std::vector<float>(weights.size(), 0.0f);
    biasGradient = biasMean = biasSquare = std::vector<float>(bias.size(), 0.0f);
}

void PixelNetwork::Layer::clearGradient()
{
    std::fill(weightGradient.begin(), weightGradient.end(), 0.0f);
    std::fill(biasGradient.begin(), biasGradient.end(), 0.0f);
}

void PixelNetwork::Layer::step(float rate, float decay, int steps)
{
    const float meanCorrection = float(1.0 / (1.0 - std::pow(0.9, steps)));
    const float squareCorrection = float(1.0 / (1.0 - std::pow(0.99, steps)));
    Adam adam {rate, decay, meanCorrection, squareCorrection};
    adamStep(weights.data(),
             weightGradient.data(),
             weightMean.data(),
             weightSquare.data(),
             int(weights.size()),
             adam);
    adam.decay = 0.0f;
    adamStep(bias.data(), biasGradient.data(), biasMean.data(), biasSquare.data(), outputs, adam);
}

struct PixelNetwork::Activations
{
    explicit Activations(const Layer *layers)
        : input(layers[0].inputs)
        , hidden1(layers[0].outputs)
        , hidden2(layers[1].outputs)
    { }

    std::vector<float> input, hidden1, hidden2;
};

PixelNetwork::PixelNetwork(const PixelNetworkOptions &options)
    : m_options(options)
    , m_random(options.seed)
{
    m_layers[0].initialise(options.inputs, options.hidden1, m_random);
    m_layers[1].initialise(options.hidden1, options.hidden2, m_random);
    m_layers[2].initialise(options.hidden2, 1, m_random);
}

void PixelNetwork::fixScale(const cv::Mat &features)
{
    m_mean.resize(m_options.inputs);
    m_scale.resize(m_options.inputs);
    for (int i = 0; i < m_options.inputs; ++i) {
        cv::Scalar mean, deviation;
        cv::meanStdDev(features.col(i), mean, deviation);
        m_mean[i] = float(mean[0]);
        // A feature that hardly varies among the samples must not become huge on other pixels.
        m_scale[i] = float(1.0 / std::max(deviation[0], 4.0));
    }
}

float PixelNetwork::forward(const float *features, Activations &at) const
{
    for (int i = 0; i < m_options.inputs; ++i)
        at.input[i] = (features[i] - m_mean[i]) * m_scale[i];
    const auto run = [](const Layer &layer, const std::vector<float> &in, std::vector<float> &out) {
        for (int o = 0; o < layer.outputs; ++o) {
            const float *row = layer.weights.data() + o * layer.inputs;
            out[o] = std::max(0.0f, layer.bias[o] + dot(row, in.data(), layer.inputs));
        }
    };
    run(m_layers[0], at.input, at.hidden1);
    run(m_layers[1], at.hidden1, at.hidden2);
    const Layer &last = m_layers[2];
    return last.bias[0] + dot(last.weights.data(), at.hidden2.data(), last.inputs);
}

void PixelNetwork::backward(float error, const Activations &at, Activations &gradient)
{
    std::fill(gradient.hidden2.begin(), gradient.hidden2.end(), 0.0f);
    std::fill(gradient.hidden1.begin(), gradient.hidden1.end(), 0.0f);
    const auto run =
        [](Layer &layer, int o, float delta, const std::vector<float> &in, float *down) {
            layer.biasGradient[o] += delta;
            addScaled(
                layer.weightGradient.data() + o * layer.inputs, in.data(), delta, layer.inputs);
            if (down)
                addScaled(down, layer.weights.data() + o * layer.inputs, delta, layer.inputs);
        };
    run(m_layers[2], 0, error, at.hidden2, gradient.hidden2.data());
    for (int o = 0; o < m_layers[1].outputs; ++o) {
        if (at.hidden2[o] > 0.0f)
            run(m_layers[1], o, gradient.hidden2[o], at.hidden1, gradient.hidden1.data());
    }
    for (int o = 0; o < m_layers[0].outputs; ++o) {
        if (at.hidden1[o] > 0.0f)
            run(m_layers[0], o, gradient.hidden1[o], at.input, nullptr);
    }
}

void PixelNetwork::trainBatch(const TrainingSet &set, const int *order, int count, double rate)
{
    Activations at(m_layers);
    Activations gradient(m_layers);
    for (Layer &layer : m_layers)
        layer.clearGradient();
    for (int i = 0; i < count; ++i) {
        const int sample = order[i];
        const float logit = forward(set.features.ptr<float>(sample), at);
        const float probability = 1.0f / (1.0f + std::exp(-logit));
        const float error = (probability - set.targets[sample]) * set.weights[sample] / count;
        backward(error, at, gradient);
    }
    ++m_steps;
    for (Layer &layer : m_layers)
        layer.step(float(rate), float(m_options.weightDecay), m_steps);
}

void PixelNetwork::train(const TrainingSet &set, int epochs, double rateFactor)
{
    if (set.size() == 0)
        return;
    if (!m_trained)
        fixScale(set.features);
    m_trained = true;
    std::vector<int> order(set.size());
    std::iota(order.begin(), order.end(), 0);
    for (int epoch = 0; epoch < epochs; ++epoch) {
        for (int i = set.size() - 1; i > 0; --i)
            std::swap(order[i], order[m_random.uniform(0, i + 1)]);
        // The rate falls from epoch to epoch, so that the last one settles.
        const double rate = m_options.learningRate * rateFactor * (1.0 - 0.8 * epoch / epochs);
        for (int first = 0; first < set.size(); first += m_options.batch)
            trainBatch(set, &order[first], std::min(m_options.batch, set.size() - first), rate);
    }
}

void PixelNetwork::evaluateBlock(const uchar *const *inputs, int count, float *out) const
{
    constexpr float unbounded = -1e30f;
    const Layer &last = m_layers[2];
    const int inputCount = m_options.inputs;
    std::vector<float> buffer((inputCount + last.inputs + m_layers[0].outputs + 1) * blockSize);
    float *in = buffer.data();
    float *hidden1 = in + inputCount * blockSize;
    float *hidden2 = hidden1 + m_layers[0].outputs * blockSize;
    float *result = hidden2 + last.inputs * blockSize;
    for (int k = 0; k < inputCount; ++k) {
        for (int i = 0; i < count; ++i)
            in[k * blockSize + i] = (inputs[k][i] - m_mean[k]) * m_scale[k];
    }
    const auto apply = [](const Layer &layer, const float *from, float *to, float floor) {
        const float *weights = layer.weights.data();
        applyLayer(weights, layer.bias.data(), layer.inputs, layer.outputs, from, to, floor);
    };
    apply(m_layers[0], in, hidden1, 0.0f);
    apply(m_layers[1], hidden1, hidden2, 0.0f);
    apply(last, hidden2, result, unbounded);
    const float limit = float(m_options.limit);
    for (int i = 0; i < count; ++i)
        out[i] = std::clamp(result[i], -limit, limit);
}

cv::Mat PixelNetwork::logits(const FrameFeatures &features, const cv::Rect &area) const
{
    cv::Mat result(area.size(), CV_32F, cv::Scalar(0.0f));
    if (!m_trained)
        return result;
    const int width = features.size().width;
    cv::parallel_for_(cv::Range(0, area.height), [&](const cv::Range &rows) {
        std::vector<const uchar *> inputs(m_options.inputs);
        for (int y = rows.start; y < rows.end; ++y) {
            for (int x = 0; x < area.width; x += blockSize) {
                const int pixel = (area.y + y) * width + area.x + x;
                for (int k = 0; k < m_options.inputs; ++k)
                    inputs[k] = features.planes.ptr(k) + pixel;
                const int count = std::min(blockSize, area.width - x);
                evaluateBlock(inputs.data(), count, result.ptr<float>(y) + x);
            }
        }
    });
    return result;
}

} // namespace zk::engine
