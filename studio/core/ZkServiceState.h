// Where the AI service is that the host program works with.
#pragma once

#include "ZkGlobal.h"

#include <functional>

namespace zk::core {

// Says whether the configured service can be reached; ZkNetwork::IsNetworkConnect() asks it instead of
// the machine's network, which a service on this machine does without. Empty, which it is at first:
// the network counts. GUI thread only.
ZKCORE_EXPORT void setServiceState(std::function<bool()> isReachable);

} // namespace zk::core
