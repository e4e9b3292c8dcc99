// A network from an ONNX file, run by OpenCV's DNN module on the processor.
#pragma once

#include "../ZkEngineGlobal.h"
#include "ZkModelProblem.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace zk::engine {

// What docs/network.md asks for; anything else is turned down when it is loaded. Any thread may run it; runs
// on several threads come one after the other, each on all processors. It keeps nothing from run to run, and
// the same pictures give the same result.
class ZKENGINE_EXPORT OnnxModel
{
public:
    // The bytes are those of the file and are not needed afterwards. Checks names, types and shapes, and
    // runs it once on a drawn picture, so it takes as long as a frame does. Null, with the problem, when
    // the network is not fit. Never throws.
    static std::shared_ptr<const OnnxModel>
    load(const char *bytes, std::size_t size, ModelProblem *problem);
    ~OnnxModel();

    EngineRole role() const;
    bool takes(const char *input) const;
    // Of its pictures; 0 x 0: any multiple of 32 on either side.
    cv::Size fixedSize() const;

    // Pictures by the names of the inputs: CV_32FC3 in R, G, B order or CV_32FC1, 0 .. 1, all of the
    // network's size. Those that it does not take are left out.
    using Pictures = std::map<std::string, cv::Mat>;
    // What it makes of them, of the same size, 0 .. 1: CV_32FC1, or CV_32FC3 for inpainting. Empty, with
    // the problem, when it fails. Never throws.
    cv::Mat run(const Pictures &pictures, ModelProblem *problem) const;

private:
    OnnxModel();
    struct Private;
    const std::unique_ptr<Private> d;
};

using OnnxModelPtr = std::shared_ptr<const OnnxModel>;

} // namespace zk::engine
