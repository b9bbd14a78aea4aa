#include "network/address_snapshot.h"

namespace velora_com::qel::network {

support::InterfaceAddresses address_snapshot() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) {
        return nullptr;
    }
    return support::InterfaceAddresses(list);
}

}  // namespace velora_com::qel::network
