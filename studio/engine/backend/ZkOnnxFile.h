// What an ONNX file says about itself: OpenCV hides the names and shapes of a network's inputs. The
// function is not public.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace zk::engine {

struct OnnxTensor
{
    static constexpr int float32 = 1; // of elementType

    std::string name;
    int elementType = 0; // as ONNX numbers them
    std::vector<std::int64_t> shape; // 0: any length
};

struct OnnxFile
{
    std::vector<OnnxTensor> inputs; // without the network's constants
    std::vector<OnnxTensor> outputs;
    std::set<std::string> used; // names that operators take

    const OnnxTensor *input(const std::string &name) const;
    const OnnxTensor *output(const std::string &name) const;
};

// False when the bytes, which may be anything, are no ONNX file with a network in it.
bool readOnnxFile(const char *bytes, std::size_t size, OnnxFile *file);

} // namespace zk::engine
