// Who does the engine's work: the built-in algorithms, or something else that is put in their place.
#pragma once

#include "ZkInpaintingBackend.h"
#include "ZkSegmentationBackend.h"
#include "ZkTrackingBackend.h"

#include <memory>

namespace zk::engine {

// Shared by everybody who needs a backend, and handed to them by whoever knows what the user has chosen.
// Immutable: any thread may create, and what was created may outlive it. No result is ever null.
class ZKENGINE_EXPORT EngineBackends
{
public:
    virtual ~EngineBackends();

    virtual std::unique_ptr<SegmentationBackend> createSegmenter() const = 0;
    virtual std::unique_ptr<TrackingBackend> createTracker() const = 0;
    virtual std::unique_ptr<InpaintingBackend> createEraser(const EraserOptions &options) const = 0;
};

using EngineBackendsPtr = std::shared_ptr<const EngineBackends>;

// The built-in algorithms, which need no network. The same object every time.
ZKENGINE_EXPORT EngineBackendsPtr classicalBackends();

} // namespace zk::engine
