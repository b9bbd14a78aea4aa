#include <algorithm>
#include <utility>

#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {

const NetInterface* NetInterfaceList::find_address(const std::string& ip) const {
    for (const auto& [index, interface] : interfaces_) {
        const auto& addresses = interface.addresses_;
        if (std::any_of(addresses.begin(), addresses.end(),
                        [&ip](const IPAddress& address) { return address.address_ == ip; })) {
            return &interface;
        }
    }
    return nullptr;
}

int getNetInterfaceFromIPAddress(NetInterface& out, const std::string& ip, NetInterfaceList& list) {
    const NetInterface* const found = list.find_address(ip);
    if (found == nullptr) {
        return 0;
    }
    return support::or_failure(0, [found, &out] {
        NetInterface copy = *found;
        out = std::move(copy);
        return 1;
    });
}

int getMACAddressFromIPAddress(std::string& mac, const std::string& ip, NetInterfaceList& list) {
    const NetInterface* const found = list.find_address(ip);
    if (found == nullptr) {
        return 0;
    }
    return support::or_failure(0, [found, &mac] {
        mac = found->mac_address_;
        return 1;
    });
}

}  // namespace velora_com::qel
