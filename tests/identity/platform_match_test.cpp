#include <gtest/gtest.h>

#include <string>

#include "vlrcomn/agent_identity.h"

namespace {

constexpr uint32_t match = 0;
constexpr uint32_t outside = 1;
constexpr uint32_t unnamed = ORU_FAILURE;

TEST(PlatformMatch, DecidesOnNamesAndRanges) {
    const std::string longest(259, 'M');
    const struct {
        std::string platform;
        std::string list;
        uint32_t expected;
    } cases[] = {
        // Names.
        {"MAC:10:4:11", "WIN|MAC", match},
        {"MAC:10:4:11", "WIN", unnamed},
        {"MAC", "MACX", unnamed},
        {"MAC", "mac", unnamed},
        {"MAC:1", ":0", match},
        // Ranges.
        {"MAC:10:4:11", "MAC:10:4:0-10:4:10", outside},
        {"MAC:10:4:11", "MAC:10:4:0-10:4:11", match},
        {"MAC:10:4:11", "MAC:10:5", outside},
        {"MAC:10:4:11", "MAC:10:4:11", match},
        {"MAC:10:4:11", "MAC:10:5|MAC", match},
        {"M A C : 1 0 : 4", " MAC : 10 : 4 - 10 : 4 ", match},
        {"MAC:\t10:+4", "MAC:10:4:0-10:4:0", match},
        {"MAC:10\t:4", "MAC:10:0:0-10:0:0", match},  // the tab ends the numbers
        {"MAC:-1:0:0", "MAC:-1--1:0:0", outside},
        // Bounds carry over from entry to entry of the platform's name only.
        {"MAC:10:4:0", "MAC:11-12|MAC:-20", outside},
        {"MAC:10:4:0", "WIN:10:5|MAC:10", match},
        {"MAC:10:4:0", "MAC:1-2|MAC:10", outside},
        // Packing: builds spill into the minor, everything is modulo 2^64 and unsigned.
        {"MAC:1:0:65536", "MAC:1:1:0-1:1:0", match},
        {"MAC:65535:-1:65535", "MAC:0", match},
        {"MAC:65536", "MAC:0-0:0:0", match},
        {"MAC:0:0:-1", "MAC:1-0:0:-1", match},
        // Numbers past 32 bits saturate.
        {"MAC:0:0:99999999999999999999", "MAC:0:0:2147483647-0:0:2147483647", match},
        {"MAC:0:-2147483649:0", "MAC:65535-0:-99999999999:0", match},
        // Lengths, blanks not counted.
        {longest, longest + " ", match},
        {longest + "M", "MAC", unnamed},
        {"MMM", "M|" + longest, unnamed},
        {std::string(5000, ' ') + "MAC", std::string(5000, ' ') + "MAC", match},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(orumcomn_IsPlatformMatch(c.platform.c_str(), c.list.c_str()), c.expected)
            << c.platform << " in " << c.list;
    }
    EXPECT_EQ(orumcomn_IsPlatformMatch(nullptr, "MAC"), unnamed);
    EXPECT_EQ(orumcomn_IsPlatformMatch("MAC", nullptr), unnamed);
}

}  // namespace
