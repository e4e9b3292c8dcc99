#include "ZkCore.h"
#include "ZkServiceState.h"

#include <utility>

// Asked of the system directly: Qt Network would be a library more for one question.
#ifdef Q_OS_WIN
#include <winsock2.h>

#include <iphlpapi.h>

#include <vector>
#else
#include <ifaddrs.h>
#include <net/if.h>
#endif

namespace {

#ifdef Q_OS_WIN

bool hasConnectedInterface()
{
    constexpr ULONG flags = GAA_FLAG_SKIP_UNICAST | GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST
        | GAA_FLAG_SKIP_DNS_SERVER;
    ULONG size = 16 * 1024;
    std::vector<char> buffer;
    ULONG result = ERROR_BUFFER_OVERFLOW;
    // The list may have grown between the answer about its size and the next call.
    for (int attempt = 0; attempt < 3 && result == ERROR_BUFFER_OVERFLOW; ++attempt) {
        buffer.resize(size);
        auto *adapters = reinterpret_cast<IP_ADAPTER_ADDRESSES *>(buffer.data());
        result = GetAdaptersAddresses(AF_UNSPEC, flags, nullptr, adapters, &size);
    }
    if (result != NO_ERROR)
        return false;
    const auto *adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES *>(buffer.data());
    for (; adapter; adapter = adapter->Next) {
        if (adapter->OperStatus == IfOperStatusUp && adapter->IfType != IF_TYPE_SOFTWARE_LOOPBACK)
            return true;
    }
    return false;
}

#else

bool isConnected(unsigned int flags)
{
    // Running: up and with a carrier. An unplugged card is up.
    return (flags & IFF_UP) && (flags & IFF_RUNNING) && !(flags & IFF_LOOPBACK);
}

bool hasConnectedInterface()
{
    ifaddrs *interfaces = nullptr;
    if (getifaddrs(&interfaces) != 0)
        return false;
    bool found = false;
    for (const ifaddrs *entry = interfaces; entry && !found; entry = entry->ifa_next)
        found = isConnected(entry->ifa_flags);
    freeifaddrs(interfaces);
    return found;
}

#endif

} // namespace

namespace {

std::function<bool()> &serviceState()
{
    static std::function<bool()> isReachable;
    return isReachable;
}

} // namespace

void zk::core::setServiceState(std::function<bool()> isReachable)
{
    serviceState() = std::move(isReachable);
}

bool ZkNetwork::IsNetworkConnect()
{
    return serviceState() ? serviceState()() : hasConnectedInterface();
}
