// What segmentation made of one node, held by count.
#pragma once

#include "../ZkGlobal.h"

#include <utility>

// Created by the segmentation service with a count of 1 for the caller; the last release() deletes it.
// It never changes. GUI thread only.
class ZK_INTERFACE IZkSegmentResult
{
public:
    virtual void addReference() = 0;
    virtual void release() = 0;

protected:
    virtual ~IZkSegmentResult() = default;
};

// One reference: a copy adds one, the destructor releases it.
class ZkSegmentResultPtr
{
public:
    ZkSegmentResultPtr() = default;
    // Takes over the caller's reference.
    explicit ZkSegmentResultPtr(IZkSegmentResult *result)
        : m_result(result)
    { }
    ZkSegmentResultPtr(const ZkSegmentResultPtr &other)
        : m_result(other.m_result)
    {
        if (m_result)
            m_result->addReference();
    }
    ZkSegmentResultPtr(ZkSegmentResultPtr &&other) noexcept
        : m_result(std::exchange(other.m_result, nullptr))
    { }
    ~ZkSegmentResultPtr()
    {
        if (m_result)
            m_result->release();
    }
    ZkSegmentResultPtr &operator=(ZkSegmentResultPtr other) noexcept
    {
        std::swap(m_result, other.m_result);
        return *this;
    }

    IZkSegmentResult *get() const { return m_result; }
    explicit operator bool() const { return m_result != nullptr; }

private:
    IZkSegmentResult *m_result = nullptr;
};
