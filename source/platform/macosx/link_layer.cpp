#include <ifaddrs.h>
#include <sys/types.h>
// After sys/types.h, as older systems need it.
#include <net/if_dl.h>

#include <cstddef>

#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<LinkLayerAddress> link_layer_address(const ifaddrs& entry) {
    if (entry.ifa_addr == nullptr || entry.ifa_addr->sa_family != AF_LINK) {
        return std::nullopt;
    }
    // The system may list fewer bytes than the structure has: nothing is read past the stated length.
    const auto* const bytes = reinterpret_cast<const unsigned char*>(entry.ifa_addr);
    const auto byte_at = [&](size_t offset) -> unsigned char {
        return offset < entry.ifa_addr->sa_len ? bytes[offset] : 0;
    };
    // The address follows the interface's name; the system adds no terminator.
    const size_t start = offsetof(sockaddr_dl, sdl_data) + byte_at(offsetof(sockaddr_dl, sdl_nlen));
    LinkLayerAddress address{};
    for (size_t i = 0; i < address.size(); ++i) {
        address[i] = byte_at(start + i);
    }
    return address;
}

// Every address states its own length; that of a mask ends behind its last byte that is not zero.
socklen_t socket_address_size(const sockaddr& address, int) {
    return address.sa_len;
}

}  // namespace velora_com::qel::platform
