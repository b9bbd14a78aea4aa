// Which address the report names.
#include "sysprops/address_choice.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

namespace velora_com::qel::sysprops {
namespace {

// An interface whose MAC address is its index and whose masks and subnets are "m" and "s" with
// the place in the list.
void add(NetInterfaceList& list, unsigned int index, const std::vector<std::string>& addresses) {
    NetInterface& interface = list.getNetInterface(index);
    interface.setOption(NETINTERFACE_INDEX, index);
    interface.setOption(NETINTERFACE_MACADDRESS, std::to_string(index));
    for (size_t i = 0; i < addresses.size(); ++i) {
        const bool ipv6 = addresses[i].find(':') != std::string::npos;
        IPAddress address;
        address.setOption(IP_ADDRESS, addresses[i]);
        address.setOption(IP_FAMILY, static_cast<unsigned int>(ipv6 ? AF_INET6 : AF_INET));
        address.setOption(IP_SUBNETMASK, "m" + std::to_string(i));
        address.setOption(IP_SUBNETADDR, "s" + std::to_string(i));
        interface.setOption(NETINTERFACE_IPADDRESS, address);
    }
}

TEST(AddressChoice, FollowsTheLastKnownAddress) {
    NetInterfaceList both(false), ipv6(false), ipv4(false);
    add(both, 7, {"fd00:0:0:0:0:0:0:7", "10.1.2.3", "10.1.2.3", "10.1.2.4"});
    add(both, 4, {"fe80:0:0:0:0:0:0:4", "192.0.2.4"});
    add(ipv6, 9, {"fd00:0:0:0:0:0:0:9"});
    add(ipv6, 3, {"fe80:0:0:0:0:0:0:3"});
    add(ipv4, 5, {"192.0.2.5"});
    const struct {
        NetInterfaceList& list;
        const char* last_known;
        const wchar_t* chosen;  // address, MAC, mask, subnet
    } cases[] = {
        // Present, though another interface has a lower index; the later duplicate gives the subnet.
        {both, "10.1.2.3", L"10.1.2.3 7 m2 s2"},
        {both, "10.1.2.4", L"10.1.2.4 7 m3 s3"},
        {both, "fd00:0:0:0:0:0:0:7", L"fd00:0:0:0:0:0:0:7 7 m0 s0"},
        // Unknown or gone: the first of its family, by index. A compressed one matches nothing.
        {both, "10.9.9.9", L"192.0.2.4 4 m1 s1"},
        {both, "fd00::7", L"fe80:0:0:0:0:0:0:4 4 m0 s0"},
        // Nothing of the family: the very first.
        {ipv6, "", L"fe80:0:0:0:0:0:0:3 3 m0 s0"},
        {ipv4, "fd00:0:0:0:0:0:0:7", L"192.0.2.5 5 m0 s0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.last_known);
        NetworkInformation info;
        choose_address(c.list, c.last_known, info);
        EXPECT_EQ(info.wstrIPAddress + L' ' + info.wstrNETAddress + L' ' + info.wstrSubnetMask +
                      L' ' + info.wstrSubnetAddress,
                  c.chosen);
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
