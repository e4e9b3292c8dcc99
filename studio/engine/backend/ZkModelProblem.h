// What a network is for, and what can be wrong with one.
#pragma once

#include <string>

namespace zk::engine {

enum class EngineRole { Segmentation, Tracking, Inpainting };
constexpr EngineRole engineRoles[] = {
    EngineRole::Segmentation, EngineRole::Tracking, EngineRole::Inpainting};
constexpr int engineRoleCount = 3;

// Facts, from which whoever shows them makes sentences. The texts in it are names and shapes, such as
// "matte" and "1x3x288x512", or for Unsupported and CannotRun what OpenCV said; '?' is any size.
struct ModelProblem
{
    enum class Kind {
        None,
        NotOnnx, // the file is none, or damaged
        UnknownRole, // found: names of the inputs
        MissingInput, // tensor; found: names of the inputs
        UnknownInput, // tensor
        UnusedInput, // tensor: no operator of the network takes it
        MissingOutput, // tensor; found: names of the outputs
        WrongType, // tensor: its elements are no 32 bit floats
        WrongShape, // tensor, found, expected; of an output also when it is run
        Unsupported, // OpenCV cannot read it; tensor: the operator, if one is at fault
        CannotRun, // OpenCV fails when it is run
        NotFinite, // tensor: has values that are not numbers
        OutOfRange, // tensor, found: "-3.2 .. 5.1", expected: "0 .. 1"
    };

    Kind kind = Kind::None;
    std::string tensor;
    std::string found;
    std::string expected;

    explicit operator bool() const { return kind != Kind::None; }
};

} // namespace zk::engine
