#pragma once

#include "ZkEncodedMatte.h"

#include "datamodel/ZkSegmentResult.h"

namespace zk::datamodel {

// The mask of a node, on its own: it outlives the node, the service and the clip.
class NodeResult : public IZkSegmentResult
{
public:
    static ZkSegmentResultPtr create(const EncodedMatte &matte);

    const EncodedMatte &matte() const { return m_matte; }

    void addReference() override { ++m_references; }
    void release() override;

private:
    Q_DISABLE_COPY(NodeResult)
    explicit NodeResult(const EncodedMatte &matte);
    ~NodeResult() override = default;

    const EncodedMatte m_matte;
    int m_references = 1;
};

} // namespace zk::datamodel
