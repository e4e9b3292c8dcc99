// What takes objects out of a clip.
#pragma once

#include "../ZkEngineGlobal.h"
#include "../erasing/ZkObjectEraser.h"

#include <functional>

namespace zk::engine {

// It holds no state between runs; several may run on different threads. Whoever created it owns it.
class ZKENGINE_EXPORT InpaintingBackend
{
public:
    virtual ~InpaintingBackend();

    // As ObjectEraser::run(): frames with masks in, frames without the objects out, in the order of the
    // clip. It blocks, and holds no more frames at a time than it needs. goOn is called on this thread with
    // the share of the work that is done, 0 .. 1, never falling; when it returns false the run ends. times,
    // unless null, is added to.
    virtual EraseResult run(EraseSource &source,
                            EraseSink &sink,
                            const std::function<bool(double)> &goOn = {},
                            EraseTimes *times = nullptr) const = 0;
};

} // namespace zk::engine
