#include "network/mac_address.h"

#include <algorithm>

#include "network/address_snapshot.h"
#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {
namespace network {

std::string mac_text(const platform::LinkLayerAddress& address) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * address.size());
    for (const unsigned char byte : address) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

}  // namespace network

std::string formatMACAddress(unsigned char* bytes) {
    if (bytes == nullptr) {
        return {};
    }
    platform::LinkLayerAddress address;
    std::copy_n(bytes, address.size(), address.begin());
    return network::mac_text(address);  // 12 characters: within the string itself
}

int getMacAddr(std::string& mac, const std::string& interfaceName) {
    return support::or_failure(0, [&] {
        const support::CancellationOff uncancelled;
        const support::InterfaceAddresses snapshot = network::address_snapshot();
        for (const ifaddrs* entry = snapshot.get(); entry != nullptr; entry = entry->ifa_next) {
            if (interfaceName != entry->ifa_name) {
                continue;
            }
            if (const auto address = platform::link_layer_address(*entry)) {
                mac = network::mac_text(*address);
                return 1;
            }
        }
        return 0;
    });
}

}  // namespace velora_com::qel
