#include "vlrcomn/ipv6_text.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "network/ipv6_groups.h"

namespace {

using namespace velora_com::qel;

struct Rewrite {
    const char* text;
    const char* result;
};

template <typename Function, size_t count>
void expect_rewrites(Function function, const Rewrite (&table)[count]) {
    for (const Rewrite& row : table) {
        EXPECT_EQ(function(row.text), row.result) << row.text;
    }
}

TEST(ExpandIPV6Address, FillsTheFirstGapAndDropsTheScope) {
    expect_rewrites(expandIPV6Address,
                    {{"fe80::1%en0", "fe80:0:0:0:0:0:0:1"},
                     {"2001:db8::1%", "2001:db8:0:0:0:0:0:1"},
                     {"::1", "0:0:0:0:0:0:0:1"},
                     {"::", "0:0:0:0:0:0:0:0"},
                     {"fe80::", "fe80:0:0:0:0:0:0:0"},
                     {"2001:db8::8:800:200c:417a", "2001:db8:0:0:8:800:200c:417a"},
                     {"ffff:ffff:ffff:ffff::", "ffff:ffff:ffff:ffff:0:0:0:0"},
                     {"::2:3:4:5:6:7:8", "0:2:3:4:5:6:7:8"},
                     {"1:2:3:4:5:6:7::", "1:2:3:4:5:6:7:0"},
                     // An IPv4 tail is a group like any other.
                     {"::ffff:10.1.2.3", "0:0:0:0:0:0:ffff:10.1.2.3"},
                     // No gap: nothing is padded or checked.
                     {"2001:0db8:0000::%x", "2001:0db8:0000:0:0:0:0:0"},
                     {"1:2:3", "1:2:3"},
                     {"1:2:", "1:2:"},
                     {"10.1.2.3", "10.1.2.3"},
                     {"%en0", ""},
                     {"fe80:%en0:", "fe80:"},
                     {"", ""},
                     // A second gap only counts.
                     {"1::2::3", "1:0:0:0:0:2::3"},
                     {":::", "0:0:0:0:0:0::0"},
                     {"1:%::2", "1:"},
                     // Nothing is missing.
                     {"1:2:3:4::5:6:7:8", "1:2:3:4:5:6:7:8"},
                     {"::1:2:3:4:5:6:7:8", "0:1:2:3:4:5:6:7:8"},
                     {"1:2:3:4:5:6:7:8:9::1", "1:2:3:4:5:6:7:8:9:1"}});
}

TEST(ExpandIPV6Address, CountsColonsIn16Bits) {
    // The tail begins with the gap's second colon.
    const std::string most(65535, ':');
    EXPECT_TRUE(expandIPV6Address("1:" + most + "2") == "1" + most + "2");
    EXPECT_TRUE(expandIPV6Address("1:" + most + ":2") == "1:0:0:0:0:0:0:0" + most + ":2");
}

TEST(NoOfOccurences, CountsUpToSevenIn16Bits) {
    const struct {
        size_t count;
        int limit;
        int result;
    } table[] = {{0, 7, 0},         {7, 3, 7},     {8, 7, 7},     {9, 7, 7},     {9, -2, -2},
                 {9, 70000, 70000}, {40000, 7, 7}, {65536, 9, 0}, {65539, 9, 3}, {65544, 9, 9}};
    for (const auto& row : table) {
        EXPECT_EQ(noOfOccurences("x" + std::string(row.count, ':') + "y", ':', row.limit),
                  row.result)
            << row.count;
    }
}

TEST(CalculateSubNetAddrForV6, AndsGroupByGroup) {
    const struct {
        const char* address;
        const char* mask;
        const char* subnet;
    } table[] = {
        {"fe80:0:0:0:20d:93ff:fe12:3456", "ffff:ffff:ffff:ffff:0:0:0:0", "fe80:0:0:0:0:0:0:0"},
        {"2001:db8:0:0:8:800:200c:417a", "ffff:ffff:ffff:0:0:0:0:0", "2001:db8:0:0:0:0:0:0"},
        {"FE80:00AB", "FFF0:fff", "fe80:ab"},
        {"", "ffff", ""},
        {"1", "", ""},
        {"1:2:3", "f:f", "1:2"},
        {"1:2", "f:f:f:f", "1:2"},
        {":", ":", "0:0"},
        {"fe80::1", "ffff:ffff:ffff", "fe80:0:1"},
        // Numbers as strtoul reads them, with 32 bits.
        {" \t+1f:-1:0x1f:0x:zz:1z:- 1", "ffffffff:ffffffff:ff:ff:ff:ff:ff",
         "1f:ffffffff:1f:0:0:1:0"},
        {"123456789:-123456789:00000000001:-2", "ffffffff:ffffffff:ffffffff:ffffffff",
         "ffffffff:ffffffff:1:fffffffe"},
        {"10.1", "ff", "10"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(calculateSubNetAddrForV6(row.address, row.mask), row.subnet) << row.address;
    }
}

TEST(LiteralFormat, IsWrittenAndRead) {
    expect_rewrites(convertV6AddrToLiteralFormat, {{"[fe80::1%en0]", "fe80--1.ipv6-literal.net"},
                                                   {"2001:db8::1", "2001-db8--1.ipv6-literal.net"},
                                                   {"a[1:2]b]", "1-2.ipv6-literal.net"},
                                                   {"]1:2[", "]1-2[.ipv6-literal.net"},
                                                   {"[1:2", "[1-2.ipv6-literal.net"},
                                                   {"x:y.ipv6-literal.net", "x:y.ipv6-literal.net"},
                                                   {"10.1.2.3", "10.1.2.3"},
                                                   {"[10.1.2.3]", "[10.1.2.3]"}});
    expect_rewrites(convertLiteralFormatToV6Addr,
                    {{"fe80--1s4.ipv6-literal.net", "fe80::1"},
                     {"fe80--1.ipv6-literal.net", "fe80::1"},
                     {"[2001-db8--1.ipv6-literal.net]:80", "2001:db8::1"},
                     {"[host-name]", "host-name"},
                     {"]host-name[", "]host-name["},
                     {"host-name", "host-name"},
                     {"sts.ipv6-literal.net.ipv6-literal.net", ""}});
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
