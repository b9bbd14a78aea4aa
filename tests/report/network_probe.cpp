// Prints what the library finds of the network: every address of the interface list, then the address
// that the report names after each last known address given as an argument. Fields are parted by blanks.
#include <cstdio>

#include "vlrcomn/net_interface.h"
#include "vlrcomn/system_properties.h"

using namespace velora_com::qel;

int main(int count, char** arguments) {
    NetInterfaceList interfaces(false);
    getNetInterfacesList(interfaces);
    for (const unsigned int index : interfaces.getIndexes()) {
        const NetInterface& interface = interfaces.getNetInterface(index);
        for (const IPAddress& address : interface.getIPAddress()) {
            std::printf("address %u %s %s %s %s %s\n", interface.getIndex(),
                        interface.getIndexName().c_str(), interface.getMACAddress().c_str(),
                        address.getIPAddress().c_str(), address.getSubNetMask().c_str(),
                        address.getSubNetAddr().c_str());
        }
    }
    for (int i = 1; i < count; ++i) {
        orumcomn_set_local_ip_addr(sysprops::sysprops_ansi_to_wide(arguments[i]));
        sysprops::NetworkInformation info;
        const int result = sysprops::ISysProps().GetNetworkInformation(info);
        std::printf("chosen %d %ls %ls %ls %ls\n", result, info.wstrNETAddress.c_str(),
                    info.wstrIPAddress.c_str(), info.wstrSubnetMask.c_str(),
                    info.wstrSubnetAddress.c_str());
    }
}
