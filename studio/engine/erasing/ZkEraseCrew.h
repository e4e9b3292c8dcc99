// The threads of one erasing run, and the caller's wish to go on or stop. Not public.
#pragma once

#include <atomic>
#include <functional>

namespace zk::engine {

// Its owner is the thread that runs the eraser: run() blocks it, and it alone calls goOn, every few
// hundredths of a second, so that the caller's function needs no lock. Jobs look at stopped().
class EraseCrew
{
public:
    using GoOn = std::function<bool(double)>;

    // threads: 0 = one per processor.
    EraseCrew(int threads, const GoOn &goOn);

    // Calls job(0) .. job(count - 1) on the threads, in no order; false when the caller wants to stop.
    // Jobs of one call must not touch the same data. An exception of a job is thrown again here.
    bool run(int count, const std::function<void(int)> &job);

    // The share of the work that is done when the next run() begins and ends, 0 .. 1.
    void setProgress(double begin, double end);
    bool askCaller(double progress);
    bool stopped() const { return m_stopped.load(std::memory_order_relaxed); }

private:
    int m_threads;
    const GoOn &m_goOn;
    std::atomic<bool> m_stopped {false};
    double m_begin = 0.0;
    double m_end = 0.0;
    double m_told = 0.0; // progress never goes back
};

} // namespace zk::engine
