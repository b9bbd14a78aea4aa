// The rest of each function's rules is held by the fuzz target, which compares it with a plain model.
#include "vlrcomn/ipv6_text.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(calculateSubNetAddrForV6("FE80:00AB:3", "FFF0:fff"), "fe80:ab");
    // Numbers as strtoul reads them, with 32 bits.
    EXPECT_EQ(calculateSubNetAddrForV6("+1f:-1:123456789:zz", "ff:ffffffff:ffffffff:ff"),
              "1f:ffffffff:ffffffff:0");
}

}  // namespace
