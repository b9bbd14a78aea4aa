// System folders, computer name, termination flag. The system time is in time_test.cpp.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <csignal>
#include <cstring>

#include "vlrcomn/system.h"

namespace {

TEST(SystemFolders, TellTheirLengthOrTheSizeThatTheyNeed) {
    char buffer[20] = "kept";
    EXPECT_EQ(oruGetWindowsDirectory(buffer, 8), 9U);
    EXPECT_EQ(oruGetSystemDirectory(nullptr, 20), 5U);
    EXPECT_STREQ(buffer, "kept");
    EXPECT_EQ(oruGetWindowsDirectory(buffer, 9), 8U);
    EXPECT_STREQ(buffer, "/Library");
    EXPECT_EQ(oruGetSystemDirectory(buffer, 5), 4U);
    EXPECT_STREQ(buffer, "/usr");
}

TEST(ComputerName, FitsOrIsRefused) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    const uint32_t length = static_cast<uint32_t>(std::strlen(system.nodename));
    char name[sizeof system.nodename + 1] = "kept";
    uint32_t size = length;
    EXPECT_EQ(oruGetComputerName(name, &size), 0);
    EXPECT_EQ(size, length);
    EXPECT_STREQ(name, "kept");
    EXPECT_EQ(oruGetComputerName(nullptr, &size), 0);
    EXPECT_EQ(oruGetComputerName(name, nullptr), 0);
    size = length + 1;
    EXPECT_EQ(oruGetComputerName(name, &size), 1);
    EXPECT_EQ(size, length);
    EXPECT_STREQ(name, system.nodename);
}

TEST(Termination, HandlerSetsTheFlag) {
    EXPECT_EQ(bSigTermReceived, 0);
    const auto former = std::signal(SIGTERM, CatchSIGTERM);
    std::raise(SIGTERM);
    std::signal(SIGTERM, former);
    EXPECT_EQ(bSigTermReceived, 1);
    bSigTermReceived = 0;
}

}  // namespace
