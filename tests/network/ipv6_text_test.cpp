// The rest of each function's rules is held by the fuzz target, which compares it with a plain model.
#include "vlrcomn/ipv6_text.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>

#include "network/ipv6_groups.h"

namespace {

using namespace velora_com::qel;

TEST(IPv6Text, IsRewritten) {
    const struct {
        std::string (*function)(std::string);
        const char* text;
        const char* result;
    } table[] = {
        {expandIPV6Address, "fe80::1%en0", "fe80:0:0:0:0:0:0:1"},
        {expandIPV6Address, "::", "0:0:0:0:0:0:0:0"},
        {expandIPV6Address, "2001:db8::8:800:200c:417a", "2001:db8:0:0:8:800:200c:417a"},
        {expandIPV6Address, "::ffff:10.1.2.3", "0:0:0:0:0:0:ffff:10.1.2.3"},
        {expandIPV6Address, "10.1.2.3", "10.1.2.3"},
        {expandIPV6Address, "1:%::2", "1:"},
        {expandIPV6Address, "1::2::3", "1:0:0:0:0:2::3"},
        {expandIPV6Address, "1:2:3:4:5:6:7:8:9::1", "1:2:3:4:5:6:7:8:9:1"},
        {convertV6AddrToLiteralFormat, "[fe80::1%en0]", "fe80--1.ipv6-literal.net"},
        {convertV6AddrToLiteralFormat, "x:y.ipv6-literal.net", "x:y.ipv6-literal.net"},
        {convertV6AddrToLiteralFormat, "[10.1.2.3]", "[10.1.2.3]"},
        {convertLiteralFormatToV6Addr, "[2001-db8--1s4.ipv6-literal.net]:80", "2001:db8::1"},
        {convertLiteralFormatToV6Addr, "[host-name]", "host-name"},
    };
    for (const auto& [function, text, result] : table) {
        EXPECT_EQ(function(text), result) << text;
    }
}

TEST(IPv6Text, GivesSubnetsGroupByGroup) {
    const char* const table[][3] = {
        {"FE80:00AB:3", "FFF0:fff", "fe80:ab"},
        {"1", "", ""},
        // Numbers as strtoul reads them, with 32 bits.
        {" \t+1f:-1:0x1f:123456789:zz", "ff:ffffffff:ff:ffffffff:ff", "1f:ffffffff:1f:ffffffff:0"},
    };
    for (const auto& [address, mask, subnet] : table) {
        EXPECT_EQ(calculateSubNetAddrForV6(address, mask), subnet) << address;
    }
}

// The enumeration writes most addresses without the resolver's short form in between.
TEST(PlainGroups, AreWhatTheShortFormExpandsTo) {
    std::minstd_rand random(1);
    for (int round = 0; round < 20000; ++round) {
        in6_addr address{};
        for (unsigned char& byte : address.s6_addr) {
            byte = random() % 3 == 0 ? static_cast<unsigned char>(random() >> 8) : 0;
        }
        char text[INET6_ADDRSTRLEN];
        inet_ntop(AF_INET6, &address, text, sizeof text);
        if (network::has_plain_groups(address)) {
            ASSERT_EQ(network::plain_groups(address), expandIPV6Address(text)) << text;
        }
    }
}

}  // namespace
