// Which address the report names.
#include "sysprops/address_choice.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

namespace velora_com::qel::sysprops {
namespace {

IPAddress address(const char* text, const char* mask, const char* subnet) {
    IPAddress result;
    const bool ipv6 = std::string(text).find(':') != std::string::npos;
    result.setOption(IP_ADDRESS, text);
    result.setOption(IP_FAMILY, static_cast<unsigned int>(ipv6 ? AF_INET6 : AF_INET));
    result.setOption(IP_SUBNETMASK, mask);
    result.setOption(IP_SUBNETADDR, subnet);
    return result;
}

void add(NetInterfaceList& list, unsigned int index, const char* mac,
         const std::vector<IPAddress>& addresses) {
    NetInterface& interface = list.getNetInterface(index);
    interface.setOption(NETINTERFACE_INDEX, index);
    interface.setOption(NETINTERFACE_MACADDRESS, mac);
    for (const IPAddress& item : addresses) {
        interface.setOption(NETINTERFACE_IPADDRESS, item);
    }
}

TEST(AddressChoice, FollowsTheLastKnownAddress) {
    NetInterfaceList both(false);
    add(both, 7, "000000000007",
        {address("fd00:0:0:0:0:0:0:7", "m6", "s6"), address("10.1.2.3", "m7", "s7"),
         address("10.1.2.3", "m7b", "s7b"), address("10.1.2.4", "m8", "s8")});
    add(both, 4, "000000000004",
        {address("fe80:0:0:0:0:0:0:4", "m4l", "s4l"), address("192.0.2.4", "m4", "s4")});
    NetInterfaceList ipv6(false);
    add(ipv6, 9, "000000000009", {address("fd00:0:0:0:0:0:0:9", "m9", "s9")});
    add(ipv6, 3, "000000000003", {address("fe80:0:0:0:0:0:0:3", "m3", "s3")});
    NetInterfaceList ipv4(false);
    add(ipv4, 5, "000000000005", {address("192.0.2.5", "m5", "s5")});

    struct Case {
        NetInterfaceList* list;
        const char* last_known;
        const wchar_t *address, *mac, *mask, *subnet;
    };
    const Case cases[] = {
        // Present, though another interface has a lower index; the later duplicate gives the subnet.
        {&both, "10.1.2.3", L"10.1.2.3", L"000000000007", L"m7b", L"s7b"},
        {&both, "10.1.2.4", L"10.1.2.4", L"000000000007", L"m8", L"s8"},
        {&both, "fd00:0:0:0:0:0:0:7", L"fd00:0:0:0:0:0:0:7", L"000000000007", L"m6", L"s6"},
        // Unknown or gone: the first of its family, by index.
        {&both, "", L"192.0.2.4", L"000000000004", L"m4", L"s4"},
        {&both, "10.9.9.9", L"192.0.2.4", L"000000000004", L"m4", L"s4"},
        {&both, "fd00:0:0:0:0:0:0:99", L"fe80:0:0:0:0:0:0:4", L"000000000004", L"m4l", L"s4l"},
        // A compressed one matches nothing, but is IPv6.
        {&both, "fd00::7", L"fe80:0:0:0:0:0:0:4", L"000000000004", L"m4l", L"s4l"},
        {&both, "no address", L"192.0.2.4", L"000000000004", L"m4", L"s4"},
        // Nothing of the family: the very first.
        {&ipv6, "", L"fe80:0:0:0:0:0:0:3", L"000000000003", L"m3", L"s3"},
        {&ipv6, "10.1.2.3", L"fe80:0:0:0:0:0:0:3", L"000000000003", L"m3", L"s3"},
        {&ipv4, "fd00:0:0:0:0:0:0:7", L"192.0.2.5", L"000000000005", L"m5", L"s5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.last_known + std::string(" among ") +
                     (c.list == &both   ? "both"
                      : c.list == &ipv6 ? "IPv6"
                                        : "IPv4"));
        NetworkInformation info;
        choose_address(*c.list, c.last_known, info);
        EXPECT_EQ(info.wstrIPAddress, c.address);
        EXPECT_EQ(info.wstrNETAddress, c.mac);
        EXPECT_EQ(info.wstrSubnetMask, c.mask);
        EXPECT_EQ(info.wstrSubnetAddress, c.subnet);
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
