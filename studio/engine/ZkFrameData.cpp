#include "ZkFrameData.h"

#include "ZkTrackerOptions.h"

namespace zk::engine {

Transition
measuredTransition(const FrameData &earlier, const FrameData &later, const TrackerOptions &options)
{
    Transition result;
    result.motion = measureMotion(
        earlier.motionImage, later.motionImage, later.features.size(), options.motion);
    result.cut = isSceneCut(continuityOf(earlier.features.lab, later.features.lab, result.motion),
                            options.sceneCut);
    return result;
}

Transition transitionBetween(const std::shared_ptr<const FrameData> &earlier,
                             const FrameData &later,
                             const TrackerOptions &options)
{
    if (!later.transition.motion.isEmpty() && later.previous.lock() == earlier)
        return later.transition;
    return measuredTransition(*earlier, later, options);
}

} // namespace zk::engine
