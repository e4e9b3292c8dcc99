#include "ZkNodeResult.h"

namespace zk::datamodel {

NodeResult::NodeResult(const EncodedMatte &matte)
    : m_matte(matte)
{ }

ZkSegmentResultPtr NodeResult::create(const EncodedMatte &matte)
{
    return ZkSegmentResultPtr(new NodeResult(matte));
}

void NodeResult::release()
{
    if (--m_references == 0)
        delete this;
}

} // namespace zk::datamodel
