// System folders, computer name, termination flag. The system time is in time_test.cpp.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <csignal>
#include <cstring>

#include "vlrcomn/system.h"

namespace {

TEST(System, TextsFitOrTellTheSizeThatTheyNeed) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    const uint32_t length = static_cast<uint32_t>(std::strlen(system.nodename));
    char text[sizeof system.nodename + 20] = "kept";
    for (uint32_t size : {length, length - 1}) {
        const uint32_t given = size;
        EXPECT_EQ(oruGetComputerName(text, &size), 0);
        EXPECT_EQ(size, given);
    }
    EXPECT_EQ(oruGetComputerName(text, nullptr), 0);
    EXPECT_EQ(oruGetWindowsDirectory(text, 8), 9U);
    EXPECT_EQ(oruGetSystemDirectory(nullptr, 20), 5U);
    EXPECT_STREQ(text, "kept");

    EXPECT_EQ(oruGetWindowsDirectory(text, 9), 8U);
    EXPECT_STREQ(text, "/Library");
    EXPECT_EQ(oruGetSystemDirectory(text, 5), 4U);
    EXPECT_STREQ(text, "/usr");
    uint32_t size = length + 1;
    EXPECT_EQ(oruGetComputerName(nullptr, &size), 0);
    EXPECT_EQ(oruGetComputerName(text, &size), 1);
    EXPECT_EQ(size, length);
    EXPECT_STREQ(text, system.nodename);
}

TEST(System, TheHandlerSetsTheTerminationFlag) {
    EXPECT_EQ(bSigTermReceived, 0);
    const auto former = std::signal(SIGTERM, CatchSIGTERM);
    std::raise(SIGTERM);
    std::signal(SIGTERM, former);
    EXPECT_EQ(bSigTermReceived, 1);
    bSigTermReceived = 0;
}

}  // namespace
