#include <gtest/gtest.h>
#include <netinet/in.h>

#include "vlrcomn/net_interface.h"

namespace {

using namespace velora_com::qel;

TEST(NetInterfaceList, SearchesInTheOrderOfIndexes) {
    NetInterfaceList list(false);
    NetInterface found;
    for (const unsigned int index : {9u, 5u}) {
        NetInterface& entry = list.getNetInterface(index);
        EXPECT_EQ(entry.getIndex(), 0u) << "a new entry is empty";
        entry.setOption(NETINTERFACE_INDEX, index);
        entry.setOption(NETINTERFACE_MACADDRESS, "mac" + std::to_string(index));
        for (const std::string& text : {std::string("10.0.0.1"), "fe80:" + std::to_string(index)}) {
            IPAddress address;
            address.setOption(IP_ADDRESS, text);
            address.setOption(IP_FAMILY, 10u);
            address.setOption(IP_FAMILY, "text");  // no field of this type
            entry.setOption(NETINTERFACE_IPADDRESS, address);
        }
    }
    EXPECT_EQ(list.getNetInterface(9u, found), 1);
    EXPECT_EQ(list.getNetInterface(7u, found), 0);
    EXPECT_EQ(found.getIndex(), 9u);
    ASSERT_EQ(found.getIPAddress().size(), 2u) << "addresses are appended";
    EXPECT_EQ(found.getIPAddress()[1].getIPFamily(), 10u);
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "10.0.0.1", list), 1);
    EXPECT_EQ(found.getIndex(), 5u) << "the first match wins";
    std::string mac;
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "fe80:9", list), 1);
    EXPECT_EQ(getMACAddressFromIPAddress(mac, "FE80:5", list), 0);
    EXPECT_EQ(mac, "mac9");
}

TEST(Texts, AreWrittenFromBytes) {
    unsigned char bytes[] = {0x00, 0x1b, 0x63, 0xa4, 0x0f, 0x9c};
    EXPECT_EQ(formatMACAddress(bytes), "001b63a40f9c");
    sockaddr_in6 address{};
    auto* const pointer = reinterpret_cast<sockaddr*>(&address);
    std::string subnet;
    EXPECT_EQ(getNetAddr(AF_INET6, pointer, pointer, subnet), 1);
    EXPECT_EQ(subnet, "N/A");
}

}  // namespace
