// Erases with ObjectEraser: brings what other frames show, and has made up what none shows. Not public.
#pragma once

#include "ZkInpaintingBackend.h"

#include <utility>

namespace zk::engine {

class FrameEraser : public InpaintingBackend
{
public:
    // inpainter: null = the built-in one.
    FrameEraser(const EraserOptions &options, std::shared_ptr<const Inpainter> inpainter)
        : m_eraser(options, std::move(inpainter))
    { }

    EraseResult run(EraseSource &source,
                    EraseSink &sink,
                    const std::function<bool(double)> &goOn,
                    EraseTimes *times) const override
    {
        return m_eraser.run(source, sink, goOn, times);
    }

private:
    const ObjectEraser m_eraser;
};

} // namespace zk::engine
