// A frame with everything that tracking needs to know about it and that does not depend on the object.
#pragma once

#include "ZkEngineGlobal.h"

#include <opencv2/core.hpp>

#include <memory>

namespace zk::engine {

struct FrameData;

// A cheap handle on immutable shared data: copies share, and any thread may hold and read one. It owns
// references on the frame that it was made from (the pixels must not change while it lives) but none
// on the frame before it, so a queue of prepared frames costs what its own frames cost.
class ZKENGINE_EXPORT PreparedFrame
{
public:
    PreparedFrame() = default;

    bool isEmpty() const { return !m_data; }
    // Size of the frame in pixels; 0 x 0 when empty.
    cv::Size size() const;
    const std::shared_ptr<const FrameData> &data() const { return m_data; }

private:
    friend class ObjectTracker;
    explicit PreparedFrame(std::shared_ptr<const FrameData> data);

    std::shared_ptr<const FrameData> m_data;
};

} // namespace zk::engine
