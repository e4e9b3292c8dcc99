// Networks in place of the built-in algorithms.
#pragma once

#include "ZkEngineBackends.h"
#include "ZkOnnxModel.h"

#include <functional>

namespace zk::engine {

// One for each role, or null: the built-in algorithm does that work.
struct OnnxModels
{
    OnnxModelPtr segmentation;
    OnnxModelPtr tracking;
    OnnxModelPtr inpainting;
};

// A network failed when it was run; the built-in algorithm has taken its place.
struct BackendFailure
{
    EngineRole role = EngineRole::Segmentation;
    ModelProblem problem;
};

// listener, which may be empty, hears of the first failure in each role, on the thread where it came up,
// at any time while something that was created is in use.
ZKENGINE_EXPORT EngineBackendsPtr onnxBackends(
    const OnnxModels &models, const std::function<void(const BackendFailure &)> &listener = {});

} // namespace zk::engine
