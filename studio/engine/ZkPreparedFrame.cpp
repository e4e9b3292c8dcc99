#include "ZkPreparedFrame.h"

#include "ZkFrameData.h"

#include <utility>

namespace zk::engine {

PreparedFrame::PreparedFrame(std::shared_ptr<const FrameData> data)
    : m_data(std::move(data))
{ }

cv::Size PreparedFrame::size() const
{
    return m_data ? m_data->frame.size() : cv::Size();
}

} // namespace zk::engine
