// "addresses": prints every address of the interface list; "local" and hosts: the local address that leads to the
// first that can be reached. Else a file: writes a login record to it, collects everything twice with it and prints
// nothing of its own. Ends with 1 when the library has started a thread, with 2 when it has left a descriptor open.
#include <utmpx.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"
#include "vlrcomn/system_properties.h"

using namespace velora_com::qel;

static int print_addresses() {
    NetInterfaceList interfaces(false);
    getNetInterfacesList(interfaces);
    for (const unsigned int index : interfaces.getIndexes()) {
        const NetInterface& interface = interfaces.getNetInterface(index);
        for (const IPAddress& address : interface.getIPAddress()) {
            std::cout << interface.getIndex() << ' ' << interface.getIndexName() << ' '
                      << interface.getMACAddress() << ' ' << address.getIPAddress() << ' '
                      << address.getSubNetMask() << ' ' << address.getSubNetAddr() << '\n';
        }
    }
    return 0;
}

static std::ptrdiff_t entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

// Somebody who is in no directory logs on.
static void log_on(const char* records) {
    utmpxname(records);
    utmpx record = {};
    record.ut_type = USER_PROCESS;
    std::strcpy(record.ut_user, "nobody-here");
    std::ofstream(records, std::ios::binary)
        .write(reinterpret_cast<const char*>(&record), sizeof record);
}

int main(int count, char** arguments) {
    if (count > 2) {
        std::string local;
        ANetworkUtil().vlrGetLocalIPAddressFromList(arguments[2], "9", local, false, 0, 5);
        std::cout << local << '\n';
        return 0;
    }
    if (arguments[1] == std::string("addresses")) {
        return print_addresses();
    }
    log_on(arguments[1]);
    const std::ptrdiff_t descriptors = entries("/proc/self/fd");
    const std::ptrdiff_t threads = entries("/proc/self/task");  // an emulator has its own
    std::map<std::wstring, std::wstring> properties;
    sysprops::ISysProps().GetAllSystemProperties(properties);
    sysprops::ISysProps().GetAllSystemProperties(properties);
    if (entries("/proc/self/task") != threads) {
        return 1;
    }
    // The record file of the users may stay open in the C library.
    return entries("/proc/self/fd") > descriptors + 1 ? 2 : 0;
}
