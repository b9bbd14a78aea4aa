#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <string>

#include "vlrcomn/net_interface.h"

namespace {

using namespace velora_com::qel;

IPAddress address_of(const std::string& text) {
    IPAddress address;
    address.setOption(IP_ADDRESS, text);
    return address;
}

TEST(Records, SetFieldsAndIgnoreTheOthers) {
    IPAddress address;
    EXPECT_EQ(address.getIPFamily(), 0u);
    address.setOption(IP_ADDRESS, "a");
    address.setOption(IP_SUBNETMASK, "m");
    address.setOption(IP_SUBNETADDR, "s");
    address.setOption(IP_FAMILY, 10u);
    address.setOption(IP_FAMILY, "text");
    address.setOption(IP_ADDRESS, 5u);
    EXPECT_EQ(address.getIPAddress() + address.getSubNetMask() + address.getSubNetAddr(), "ams");
    EXPECT_EQ(address.getIPFamily(), 10u);

    NetInterface interface;
    EXPECT_EQ(interface.getIndex(), 0u);
    interface.setOption(NETINTERFACE_MACADDRESS, "mac");
    interface.setOption(NETINTERFACE_INDEXNAME, "name");
    interface.setOption(NETINTERFACE_INDEX, 3u);
    interface.setOption(NETINTERFACE_INDEX, "text");
    interface.setOption(NETINTERFACE_INDEXNAME, 7u);
    interface.setOption(NETINTERFACE_INDEX, address);
    EXPECT_EQ(interface.getMACAddress() + interface.getIndexName(), "macname");
    EXPECT_EQ(interface.getIndex(), 3u);
    interface.setOption(NETINTERFACE_IPADDRESS, address);
    const NetInterface copy = interface;
    interface.setOption(NETINTERFACE_IPADDRESS, address_of("b"));
    EXPECT_EQ(copy.getIPAddress().size(), 1u) << "copies are deep";
    ASSERT_EQ(interface.getIPAddress().size(), 2u) << "addresses are appended";
    EXPECT_EQ(interface.getIPAddress()[1].getIPAddress(), "b");
}

TEST(NetInterfaceList, LooksUpAndSearchesInTheOrderOfIndexes) {
    NetInterfaceList list(false);
    NetInterface found;
    found.setOption(NETINTERFACE_INDEXNAME, "kept");
    EXPECT_TRUE(list.getIndexes().empty());
    EXPECT_EQ(list.getNetInterface(5u, found), 0);
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "10.0.0.1", list), 0);
    std::string mac = "kept";
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "10.0.0.1", list), 0);
    EXPECT_EQ(found.getIndexName() + mac, "keptkept");

    for (const unsigned int index : {9u, 5u}) {
        NetInterface& entry = list.getNetInterface(index);
        EXPECT_EQ(entry.getIndex(), 0u) << "a new entry is empty";
        entry.setOption(NETINTERFACE_INDEX, index);
        entry.setOption(NETINTERFACE_MACADDRESS, "mac" + std::to_string(index));
        entry.setOption(NETINTERFACE_IPADDRESS, address_of("10.0.0.1"));
        entry.setOption(NETINTERFACE_IPADDRESS,
                        address_of("fe80:0:0:0:0:0:0:" + std::to_string(index)));
    }
    EXPECT_EQ(list.getIndexes(), (std::vector<unsigned int>{5, 9}));
    EXPECT_EQ(list.getNetInterface(9u, found), 1);
    EXPECT_EQ(found.getIndex(), 9u);
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "10.0.0.1", list), 1);
    EXPECT_EQ(found.getIndex(), 5u) << "the first match wins";
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "fe80:0:0:0:0:0:0:9", list), 1);
    EXPECT_EQ(mac, "mac9");
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "FE80:0:0:0:0:0:0:5", list), 0);
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "fe80::5", list), 0);
}

TEST(FormatMACAddress, WritesSixBytes) {
    unsigned char bytes[] = {0x00, 0x1b, 0x63, 0xa4, 0x0f, 0x9c};
    EXPECT_EQ(formatMACAddress(bytes), "001b63a40f9c");
    EXPECT_EQ(formatMACAddress(nullptr), "");
}

sockaddr_in ipv4(const char* text) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, text, &address.sin_addr);
    return address;
}

TEST(Masks, AreWrittenAndApplied) {
    sockaddr_in mask = ipv4("255.255.240.0");
    sockaddr_in address = ipv4("192.168.31.23");
    auto* const mask_pointer = reinterpret_cast<sockaddr*>(&mask);
    auto* const address_pointer = reinterpret_cast<sockaddr*>(&address);
    std::string text = "kept";
    EXPECT_EQ(getNetMask(AF_INET, nullptr, text), 0);
    EXPECT_EQ(getNetAddr(AF_INET, nullptr, address_pointer, text), 0);
    EXPECT_EQ(getNetAddr(AF_INET, mask_pointer, nullptr, text), 0);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(getNetAddr(AF_INET, mask_pointer, address_pointer, text), 1);
    EXPECT_EQ(text, "192.168.16.0");
    EXPECT_EQ(getNetAddr(AF_INET6, mask_pointer, address_pointer, text), 1);
    EXPECT_EQ(text, "N/A");

    mask.sin_family = AF_UNSPEC;  // as some systems leave it
    EXPECT_EQ(getNetMask(AF_INET, mask_pointer, text), 1);
    EXPECT_EQ(text, "255.255.240.0");
    EXPECT_EQ(mask.sin_family, AF_UNSPEC) << "the caller's mask is not changed";

    sockaddr_in6 wide{};
    inet_pton(AF_INET6, "ffff:ffff:ffff::", &wide.sin6_addr);
    EXPECT_EQ(getNetMask(AF_INET6, reinterpret_cast<sockaddr*>(&wide), text), 1);
    EXPECT_EQ(text, "ffff:ffff:ffff::");
    wide.sin6_family = AF_UNIX;
    text = "kept";
    wide.sin6_family = 77;
    EXPECT_EQ(getNetMask(AF_INET6, reinterpret_cast<sockaddr*>(&wide), text), 0);
    EXPECT_EQ(text, "kept");
}

}  // namespace
