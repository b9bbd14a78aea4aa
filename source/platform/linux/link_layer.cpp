#include <ifaddrs.h>
#include <netinet/in.h>
#include <netpacket/packet.h>

#include <algorithm>
#include <cstring>

#include "platform/platform.h"

namespace velora_com::qel::platform {

// The entry of an interface that has no link-layer address (tun, WireGuard, PPP) carries no address at all.
std::optional<LinkLayerAddress> link_layer_address(const ifaddrs& entry) {
    LinkLayerAddress address{};
    if (entry.ifa_addr == nullptr) {
        return address;
    }
    if (entry.ifa_addr->sa_family != AF_PACKET) {
        return std::nullopt;
    }
    sockaddr_ll link;
    std::memcpy(&link, entry.ifa_addr, sizeof link);
    std::copy_n(link.sll_addr, std::min<size_t>(link.sll_halen, address.size()), address.begin());
    return address;
}

// Linux carries no length in an address; an address and its mask have the size of the family that they
// state, if any.
socklen_t socket_address_size(const sockaddr& address, int family) {
    switch (address.sa_family != AF_UNSPEC ? address.sa_family : family) {
        case AF_INET:
            return sizeof(sockaddr_in);
        case AF_INET6:
            return sizeof(sockaddr_in6);
        case AF_PACKET:
            return sizeof(sockaddr_ll);
        default:
            return sizeof(sockaddr);
    }
}

}  // namespace velora_com::qel::platform
