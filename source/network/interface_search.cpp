#include <utility>

#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {

int getNetInterfaceFromIPAddress(NetInterface& out, const std::string& ip, NetInterfaceList& list) {
    return support::or_failure(0, [&] {
        for (const unsigned int index : list.getIndexes()) {
            NetInterface candidate;
            if (list.getNetInterface(index, candidate) != 1) {
                return 0;
            }
            for (const IPAddress& address : candidate.getIPAddress()) {
                if (address.getIPAddress() == ip) {
                    out = std::move(candidate);
                    return 1;
                }
            }
        }
        return 0;
    });
}

int getMACAddressFromIPAddress(std::string& mac, const std::string& ip, NetInterfaceList& list) {
    NetInterface found;
    if (getNetInterfaceFromIPAddress(found, ip, list) != 1) {
        return 0;
    }
    mac = found.getMACAddress();
    return 1;
}

}  // namespace velora_com::qel
