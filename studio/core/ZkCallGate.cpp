#include "ZkCallGate_p.h"

#include <algorithm>

bool ZkCallGate::enter()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_closed)
        m_inside.push_back(std::this_thread::get_id());
    return !m_closed;
}

void ZkCallGate::leave()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_inside.erase(std::find(m_inside.begin(), m_inside.end(), std::this_thread::get_id()));
    }
    m_left.notify_all();
}

void ZkCallGate::close()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_closed = true;
    m_left.wait(lock, [this] { return !othersAreInside(); });
}

bool ZkCallGate::isInside() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto self = std::this_thread::get_id();
    return std::find(m_inside.begin(), m_inside.end(), self) != m_inside.end();
}

bool ZkCallGate::othersAreInside() const
{
    const auto self = std::this_thread::get_id();
    return std::any_of(
        m_inside.begin(), m_inside.end(), [self](std::thread::id id) { return id != self; });
}
