// The tensors that a network has, by what it is for; docs/network.md describes them. Not public.
#pragma once

#include "ZkModelProblem.h"
#include "ZkOnnxFile.h"

#include <opencv2/core.hpp>

#include <string>
#include <vector>

namespace zk::engine {

namespace tensor {
constexpr char image[] = "image";
constexpr char keep[] = "keep";
constexpr char remove[] = "remove";
constexpr char previous[] = "previous";
constexpr char before[] = "before";
constexpr char after[] = "after";
constexpr char previousImage[] = "previous_image";
constexpr char previousMatte[] = "previous_matte";
constexpr char firstImage[] = "first_image";
constexpr char firstMatte[] = "first_matte";
constexpr char hole[] = "hole";
constexpr char matte[] = "matte";
constexpr char filled[] = "filled";
} // namespace tensor

struct LayoutInput
{
    const char *name;
    int channels;
    bool isRequired;
};

struct ModelLayout
{
    EngineRole role;
    const char *mark; // the input that no other role has
    std::vector<LayoutInput> inputs;
    const char *output;
    int outputChannels;
    double tolerance; // values of the output outside 0 .. 1 by no more than this are clipped

    const LayoutInput *input(const std::string &name) const;
};

// Null when the network is for none of them.
const ModelLayout *layoutOf(const OnnxFile &file);

// What is wrong with the names, types and shapes of the network; none: it fits.
ModelProblem checkLayout(const OnnxFile &file, const ModelLayout &layout);

// Of the pictures that a network which fits takes; 0 x 0: of any size.
cv::Size pictureSize(const OnnxFile &file);

std::string namesOf(const std::vector<OnnxTensor> &tensors);
std::string shapeText(const std::vector<std::int64_t> &shape);

} // namespace zk::engine
