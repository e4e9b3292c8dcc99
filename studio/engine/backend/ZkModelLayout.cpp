#include "ZkModelLayout.h"

#include <algorithm>

namespace zk::engine {

namespace {

using Kind = ModelProblem::Kind;

constexpr int longestSide = 4096; // pixels; more is a mistake in the file

const std::vector<ModelLayout> &layouts()
{
    static const std::vector<ModelLayout> all {{EngineRole::Segmentation,
                                                tensor::keep,
                                                {{tensor::image, 3, true},
                                                 {tensor::keep, 1, true},
                                                 {tensor::remove, 1, false},
                                                 {tensor::previous, 1, false},
                                                 {tensor::before, 3, false},
                                                 {tensor::after, 3, false}},
                                                tensor::matte,
                                                1,
                                                0.05},
                                               {EngineRole::Tracking,
                                                tensor::previousMatte,
                                                {{tensor::image, 3, true},
                                                 {tensor::previousMatte, 1, true},
                                                 {tensor::previousImage, 3, false},
                                                 {tensor::firstImage, 3, false},
                                                 {tensor::firstMatte, 1, false}},
                                                tensor::matte,
                                                1,
                                                0.05},
                                               {EngineRole::Inpainting,
                                                tensor::hole,
                                                {{tensor::image, 3, true}, {tensor::hole, 1, true}},
                                                tensor::filled,
                                                3,
                                                0.25}};
    return all;
}

bool isAnyOr(std::int64_t length, std::int64_t expected)
{
    return length == 0 || length == expected;
}

// 1 x channels x height x width, with both sides given or both any.
bool hasLayout(const std::vector<std::int64_t> &shape, int channels)
{
    return shape.size() == 4 && isAnyOr(shape[0], 1) && isAnyOr(shape[1], channels)
        && (shape[2] == 0) == (shape[3] == 0) && std::max(shape[2], shape[3]) <= longestSide;
}

cv::Size sizeOf(const std::vector<std::int64_t> &shape)
{
    return {int(shape[3]), int(shape[2])};
}

std::string expectedShape(int channels, const cv::Size &size)
{
    return shapeText({1, channels, size.height, size.width});
}

ModelProblem checkTensor(const OnnxTensor &tensor, int channels, const cv::Size &size)
{
    if (tensor.elementType != OnnxTensor::float32)
        return {Kind::WrongType, tensor.name, {}, {}};
    if (!hasLayout(tensor.shape, channels) || sizeOf(tensor.shape) != size)
        return {
            Kind::WrongShape, tensor.name, shapeText(tensor.shape), expectedShape(channels, size)};
    return {};
}

ModelProblem checkInput(const OnnxFile &file, const OnnxTensor &input, const ModelLayout &layout)
{
    const LayoutInput *known = layout.input(input.name);
    if (!known)
        return {Kind::UnknownInput, input.name, {}, {}};
    if (const ModelProblem problem = checkTensor(input, known->channels, pictureSize(file)))
        return problem;
    if (file.used.count(input.name) == 0)
        return {Kind::UnusedInput, input.name, {}, {}};
    return {};
}

// Exporters often leave the sizes of outputs open, or out altogether: the dry run shows them.
ModelProblem checkOutput(const OnnxFile &file, const ModelLayout &layout)
{
    const OnnxTensor *output = file.output(layout.output);
    if (!output)
        return {Kind::MissingOutput, layout.output, namesOf(file.outputs), {}};
    if (output->elementType != OnnxTensor::float32)
        return {Kind::WrongType, layout.output, {}, {}};
    return {};
}

} // namespace

const LayoutInput *ModelLayout::input(const std::string &name) const
{
    const auto it = std::find_if(
        inputs.begin(), inputs.end(), [&](const LayoutInput &one) { return name == one.name; });
    return it == inputs.end() ? nullptr : &*it;
}

const ModelLayout *layoutOf(const OnnxFile &file)
{
    for (const ModelLayout &layout : layouts()) {
        if (file.input(layout.mark))
            return &layout;
    }
    return nullptr;
}

ModelProblem checkLayout(const OnnxFile &file, const ModelLayout &layout)
{
    for (const LayoutInput &input : layout.inputs) {
        if (input.isRequired && !file.input(input.name))
            return {Kind::MissingInput, input.name, namesOf(file.inputs), {}};
    }
    for (const OnnxTensor &input : file.inputs) {
        if (const ModelProblem problem = checkInput(file, input, layout))
            return problem;
    }
    return checkOutput(file, layout);
}

cv::Size pictureSize(const OnnxFile &file)
{
    const OnnxTensor *image = file.input(tensor::image);
    return image && hasLayout(image->shape, 3) ? sizeOf(image->shape) : cv::Size();
}

std::string namesOf(const std::vector<OnnxTensor> &tensors)
{
    std::string names;
    for (const OnnxTensor &tensor : tensors)
        names += (names.empty() ? "" : ", ") + tensor.name;
    return names;
}

std::string shapeText(const std::vector<std::int64_t> &shape)
{
    std::string text;
    for (const std::int64_t length : shape)
        text += (text.empty() ? "" : "x") + (length > 0 ? std::to_string(length) : "?");
    return text;
}

} // namespace zk::engine
