#include "vlrcomn/ipv6_text.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "network/ipv6_groups.h"

namespace {

using namespace velora_com::qel;

// The rest of each function's rules is held by the fuzz target, which compares it with a plain model.
struct Rewrite {
    std::string (*function)(std::string);
    const char* text;
    const char* result;
};

TEST(IPv6Text, IsRewritten) {
    const auto expand = expandIPV6Address;
    const auto to_literal = convertV6AddrToLiteralFormat;
    const auto from_literal = convertLiteralFormatToV6Addr;
    const Rewrite table[] = {
        {expand, "fe80::1%en0", "fe80:0:0:0:0:0:0:1"},
        {expand, "::", "0:0:0:0:0:0:0:0"},
        {expand, "2001:db8::8:800:200c:417a", "2001:db8:0:0:8:800:200c:417a"},
        {expand, "ffff:ffff:ffff:ffff::", "ffff:ffff:ffff:ffff:0:0:0:0"},
        {expand, "::ffff:10.1.2.3", "0:0:0:0:0:0:ffff:10.1.2.3"},
        {expand, "10.1.2.3", "10.1.2.3"},
        {expand, "1:%::2", "1:"},
        {expand, "1::2::3", "1:0:0:0:0:2::3"},
        {expand, "1:2:3:4:5:6:7:8:9::1", "1:2:3:4:5:6:7:8:9:1"},
        {to_literal, "[fe80::1%en0]", "fe80--1.ipv6-literal.net"},
        {to_literal, "x:y.ipv6-literal.net", "x:y.ipv6-literal.net"},
        {to_literal, "[10.1.2.3]", "[10.1.2.3]"},
        {from_literal, "[2001-db8--1s4.ipv6-literal.net]:80", "2001:db8::1"},
        {from_literal, "[host-name]", "host-name"},
    };
    for (const Rewrite& row : table) {
        EXPECT_EQ(row.function(row.text), row.result) << row.text;
    }
}

TEST(IPv6Text, CountsColonsIn16Bits) {
    // The tail begins with the gap's second colon.
    const std::string most(65535, ':');
    EXPECT_TRUE(expandIPV6Address("1:" + most + "2") == "1" + most + "2");
    EXPECT_TRUE(expandIPV6Address("1:" + most + ":2") == "1:0:0:0:0:0:0:0" + most + ":2");
    EXPECT_EQ(noOfOccurences(":::::::", ':', 3), 7);
    EXPECT_EQ(noOfOccurences(":::::::::", ':', 70000), 70000);
    EXPECT_EQ(noOfOccurences(most + "::::", ':', 9), 3);
}

TEST(IPv6Text, GivesSubnetsGroupByGroup) {
    const char* const table[][3] = {
        {"fe80:0:0:0:20d:93ff:fe12:3456", "ffff:ffff:ffff:ffff:0:0:0:0", "fe80:0:0:0:0:0:0:0"},
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
    int plain = 0;
    for (int round = 0; round < 20000; ++round) {
        in6_addr address{};
        for (unsigned char& byte : address.s6_addr) {
            byte = random() % 3 == 0 ? static_cast<unsigned char>(random() >> 8) : 0;
        }
        if (!network::has_plain_groups(address)) {
            continue;
        }
        ++plain;
        char text[INET6_ADDRSTRLEN];
        ASSERT_NE(inet_ntop(AF_INET6, &address, text, sizeof text), nullptr);
        ASSERT_EQ(network::plain_groups(address), expandIPV6Address(text)) << text;
    }
    EXPECT_GT(plain, 15000);
}

}  // namespace
