// Tells of the first failure in each role. Not public.
#pragma once

#include "ZkOnnxBackends.h"

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

namespace zk::engine {

// Any thread.
class FailureReport
{
public:
    explicit FailureReport(std::function<void(const BackendFailure &)> listener)
        : m_listener(std::move(listener))
    { }

    void add(EngineRole role, const ModelProblem &problem) const
    {
        if (!m_isTold[int(role)].exchange(true) && m_listener)
            m_listener({role, problem});
    }

private:
    const std::function<void(const BackendFailure &)> m_listener;
    mutable std::atomic<bool> m_isTold[engineRoleCount] {};
};

using FailureReportPtr = std::shared_ptr<const FailureReport>;

} // namespace zk::engine
