// Motion of the background between neighbouring frames, also where a hole hides it. Not public.
#pragma once

#include "ZkEraseFrame.h"

#include <functional>

namespace zk::engine {

// What the holes show when the motion is measured.
enum class HoleContent {
    Nothing, // a smooth filling: motion is measured around the holes and continued into them
    Filled, // a first filling: its motion is measured and only what contradicts itself is replaced
};

// Sets earlier->toNext and later->toPrevious, empty ones when neither frame has a hole or when a
// scene cut lies between them. Pure but for that. stopped is asked between the steps; the motion is
// then left as it is.
void measureEraseMotion(EraseFrame *earlier,
                        EraseFrame *later,
                        HoleContent content,
                        const std::function<bool()> &stopped);

} // namespace zk::engine
