#include "ZkEraseCrew.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace zk::engine {

namespace {

constexpr std::chrono::milliseconds askEvery(20);
constexpr int mostThreads = 16; // more only raise the memory that is in use at one time

} // namespace

EraseCrew::EraseCrew(int threads, const GoOn &goOn)
    : m_threads(threads > 0 ? threads : int(std::thread::hardware_concurrency()))
    , m_goOn(goOn)
{
    m_threads = std::clamp(m_threads, 1, mostThreads);
}

bool EraseCrew::run(int count, const std::function<void(int)> &job)
{
    std::atomic<int> next {0};
    std::atomic<int> done {0};
    const auto work = [&] {
        for (int i = next++; i < count && !stopped(); i = next++) {
            job(i);
            ++done;
        }
    };
    std::vector<std::future<void>> threads;
    for (int i = 0; i < std::min(m_threads, count); ++i)
        threads.push_back(std::async(std::launch::async, work));
    for (std::future<void> &thread : threads) {
        while (thread.wait_for(askEvery) != std::future_status::ready)
            askCaller(m_begin + (m_end - m_begin) * done / count);
    }
    for (std::future<void> &thread : threads)
        thread.get();
    return askCaller(m_end);
}

void EraseCrew::setProgress(double begin, double end)
{
    m_begin = begin;
    m_end = end;
}

bool EraseCrew::askCaller(double progress)
{
    m_told = std::max(m_told, std::clamp(progress, 0.0, 1.0));
    if (!stopped() && m_goOn && !m_goOn(m_told))
        m_stopped = true;
    return !stopped();
}

} // namespace zk::engine
