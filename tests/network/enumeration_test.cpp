// The table of interfaces, filled from networks that the tests make.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <string>
#include <vector>

#include "network/network_namespace.h"
#include "vlrcomn/net_interface.h"

namespace {

using namespace velora_com::qel;
using network_test::NetworkNamespace;

// One line for each address: "name mac address/mask=subnet".
std::vector<std::string> lines(const NetInterfaceList& list) {
    std::vector<std::string> all;
    for (const unsigned int index : list.getIndexes()) {
        NetInterface interface;
        EXPECT_EQ(list.getNetInterface(index, interface), 1);
        EXPECT_EQ(interface.getIndex(), index);
        for (const IPAddress& address : interface.getIPAddress()) {
            const bool ipv6 = address.getIPAddress().find(':') != std::string::npos;
            EXPECT_EQ(address.getIPFamily(), static_cast<unsigned>(ipv6 ? AF_INET6 : AF_INET));
            all.push_back(interface.getIndexName() + ' ' + interface.getMACAddress() + ' ' +
                          address.getIPAddress() + '/' + address.getSubNetMask() + '=' +
                          address.getSubNetAddr());
        }
    }
    return all;
}

using Lines = std::vector<std::string>;

TEST(Enumeration, ListsWhatIsUpAndHasALinkLayerAddress) {
    NetworkNamespace network(
        "link set lo up\n"
        "link add v0 index 10 address 02:00:5e:10:20:30 type veth peer name v1 index 11\n"
        "link set v0 addrgenmode none\nlink set v1 addrgenmode none\n"
        "addr add 198.51.100.5/24 dev v0\naddr add 203.0.113.9/30 dev v0\n"
        "addr add 2001:db8::5/64 dev v0 nodad\naddr add fe80::1/64 dev v1 nodad\n"
        "addr add ::ffff:10.1.2.3/96 dev v1 nodad\n"
        "link set v1 address 02:00:5e:00:00:0f\nlink set v0 up\nlink set v1 up\n"
        // Down, and up without a link-layer address: such a device has an entry without any address.
        "link add v2 index 12 type veth peer name v3\naddr add 192.0.2.1/24 dev v2\n"
        "tuntap add dev tun0 mode tun\naddr add 192.0.2.9/24 dev tun0\nlink set tun0 up\n");
    SKIP_WITHOUT(network);
    const Lines expected = {
        "v0 02005e102030 198.51.100.5/255.255.255.0=198.51.100.0",
        "v0 02005e102030 203.0.113.9/255.255.255.252=203.0.113.8",
        "v0 02005e102030 2001:db8:0:0:0:0:0:5/ffff:ffff:ffff:ffff:0:0:0:0=2001:db8:0:0:0:0:0:0",
        "v1 02005e00000f fe80:0:0:0:0:0:0:1/ffff:ffff:ffff:ffff:0:0:0:0=fe80:0:0:0:0:0:0:0",
        // The expansion takes the IPv4 tail for one group, which leaves one too many.
        "v1 02005e00000f 0:0:0:0:0:0:ffff:10.1.2.3/ffff:ffff:ffff:ffff:ffff:ffff:0:0"
        "=0:0:0:0:0:0:0:0",
    };
    NetInterfaceList list(false);
    ASSERT_EQ(getNetInterfacesList(list), 1);
    EXPECT_EQ(list.getIndexes(), (std::vector<unsigned int>{10, 11}));
    EXPECT_THAT(lines(list), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(list.initialize(), 1);
    EXPECT_EQ(lines(list).size(), 2 * expected.size()) << "a second filling adds all again";

    std::string mac;
    EXPECT_EQ(getMacAddr(mac, "v0"), 1);
    EXPECT_EQ(mac, "02005e102030");
    EXPECT_EQ(getMacAddr(mac, "tun0"), 0);
    EXPECT_EQ(mac, "02005e102030");
}

TEST(Enumeration, TakesTheLoopbackOnlyWhenAsked) {
    NetworkNamespace network("link set lo up\n");
    SKIP_WITHOUT(network);
    NetInterfaceList without(false);
    EXPECT_EQ(without.initialize(), 0);
    EXPECT_TRUE(without.getIndexes().empty());
    NetInterfaceList with(true);
    EXPECT_EQ(with.initialize(), 1);
    EXPECT_EQ(lines(with),
              (Lines{"lo 000000000000 127.0.0.1/255.0.0.0=127.0.0.0",
                     "lo 000000000000 0:0:0:0:0:0:0:1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"
                     "=0:0:0:0:0:0:0:1"}));
}

}  // namespace
