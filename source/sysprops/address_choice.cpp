#include "sysprops/address_choice.h"

#include <sys/socket.h>

#include <vector>

#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

void set_subnet(NetworkInformation& info, const IPAddress& address) {
    info.wstrSubnetAddress = sysprops_ansi_to_wide(address.getSubNetAddr());
    info.wstrSubnetMask = sysprops_ansi_to_wide(address.getSubNetMask());
}

void set_address(NetworkInformation& info, const NetInterface& interface,
                 const IPAddress& address) {
    info.wstrIPAddress = sysprops_ansi_to_wide(address.getIPAddress());
    info.wstrNETAddress = sysprops_ansi_to_wide(interface.getMACAddress());
    set_subnet(info, address);
}

// Takes the last known address when an interface has it. One that is listed twice gives the subnet of
// its last entry.
bool take_last_known(NetInterfaceList& interfaces, const std::string& last_known,
                     NetworkInformation& info) {
    NetInterface interface;
    if (last_known.empty() ||
        getNetInterfaceFromIPAddress(interface, last_known, interfaces) == 0) {
        return false;
    }
    info.wstrIPAddress = sysprops_ansi_to_wide(last_known);
    info.wstrNETAddress = sysprops_ansi_to_wide(interface.getMACAddress());
    for (const IPAddress& address : interface.getIPAddress()) {
        if (address.getIPAddress() == last_known) {
            set_subnet(info, address);
        }
    }
    return true;
}

// Takes the first address of a family, or the very first one when `family` is AF_UNSPEC.
bool take_first(NetInterfaceList& interfaces, unsigned int family, NetworkInformation& info) {
    for (const unsigned int index : interfaces.getIndexes()) {
        const NetInterface& interface = interfaces.getNetInterface(index);
        for (const IPAddress& address : interface.getIPAddress()) {
            if (family == AF_UNSPEC || address.getIPFamily() == family) {
                set_address(info, interface, address);
                return true;
            }
        }
    }
    return false;
}

}  // namespace

void choose_address(NetInterfaceList& interfaces, const std::string& last_known,
                    NetworkInformation& info) {
    if (take_last_known(interfaces, last_known, info)) {
        return;
    }
    const bool ipv6 = last_known.find(':') != std::string::npos;
    if (!take_first(interfaces, ipv6 ? AF_INET6 : AF_INET, info)) {
        take_first(interfaces, AF_UNSPEC, info);
    }
}

}  // namespace velora_com::qel::sysprops
