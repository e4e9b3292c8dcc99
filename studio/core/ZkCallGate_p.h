// Not public: how event listeners and log sinks can be taken away while other threads call them.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

// Stands before a callback that any thread may call and that its owner may withdraw at any moment.
// A thread may enter again while it is inside. Two threads that each close, from the inside of one
// gate, the gate that the other is in wait for each other forever: no order of returning would keep
// the promise of close() to both.
class ZkCallGate
{
public:
    // False once the gate is closed; the callback must not be touched then.
    bool enter();
    void leave();
    // Nobody enters afterwards. Returns when no other thread is inside; the calling thread may be.
    void close();
    // Whether the calling thread is inside.
    bool isInside() const;

private:
    bool othersAreInside() const;

    mutable std::mutex m_mutex;
    std::condition_variable m_left;
    std::vector<std::thread::id> m_inside; // one entry per call, so a thread may stand here twice
    bool m_closed = false;
};

// Goes through a gate for the length of a scope.
class ZkGatePass
{
public:
    explicit ZkGatePass(ZkCallGate &gate)
        : m_gate(gate)
        , m_entered(gate.enter())
    { }
    ~ZkGatePass()
    {
        if (m_entered)
            m_gate.leave();
    }
    ZkGatePass(const ZkGatePass &) = delete;
    ZkGatePass &operator=(const ZkGatePass &) = delete;

    explicit operator bool() const { return m_entered; }

private:
    ZkCallGate &m_gate;
    const bool m_entered;
};
