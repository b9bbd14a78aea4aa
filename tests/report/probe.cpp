// Without arguments: collects everything twice and prints nothing, so that what appears on its standard
// output is the library's own. Ends with 1 when the library has started a thread, with 2 when it has left a
// descriptor open. With arguments: prints every address of the interface list, then the address that the
// report names after each of them as last known address.
#include <cstdio>
#include <filesystem>

#include "vlrcomn/net_interface.h"
#include "vlrcomn/system_properties.h"

using namespace velora_com::qel;

namespace {

std::ptrdiff_t entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

int collect_quietly() {
    const std::ptrdiff_t descriptors = entries("/proc/self/fd");
    sysprops::ISysProps properties;
    std::map<std::wstring, std::wstring> report;
    properties.GetAllSystemProperties(report);
    properties.GetAllSystemProperties(report);
    if (entries("/proc/self/task") != 1) {
        return 1;
    }
    // The record file of the users may stay open in the C library.
    return entries("/proc/self/fd") > descriptors + 1 ? 2 : 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count == 1) {
        return collect_quietly();
    }
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
