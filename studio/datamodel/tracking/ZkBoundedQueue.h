#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace zk::datamodel {

// Hands values from one thread to another, and makes the giver wait while the taker has enough.
template<typename T>
class BoundedQueue
{
public:
    explicit BoundedQueue(size_t capacity)
        : m_capacity(capacity)
    { }

    // Waits for room. False after abort().
    bool push(T value)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isAborted || m_values.size() < m_capacity; });
        if (m_isAborted)
            return false;
        m_values.push_back(std::move(value));
        m_changed.notify_all();
        return true;
    }

    // Waits for a value. False after abort(), and when the queue is closed and empty.
    bool pop(T *value)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isAborted || m_isClosed || !m_values.empty(); });
        if (m_isAborted || m_values.empty())
            return false;
        *value = std::move(m_values.front());
        m_values.pop_front();
        m_changed.notify_all();
        return true;
    }

    // There will be no more values.
    void close()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }

    // Nobody waits any longer, what is in the queue is dropped.
    void abort()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isAborted = true;
        m_values.clear();
        m_changed.notify_all();
    }

private:
    const size_t m_capacity;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<T> m_values;
    bool m_isClosed = false;
    bool m_isAborted = false;
};

} // namespace zk::datamodel
