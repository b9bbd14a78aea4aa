// System folders, computer name, uptime, termination flag. The system time is in time_test.cpp.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <csignal>
#include <cstring>
#include <ctime>

#include "support/scripted_platform.h"
#include "vlrcomn/system.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

TEST(System, TextsFitOrTellTheSizeThatTheyNeed) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    const uint32_t length = static_cast<uint32_t>(std::strlen(system.nodename));
    char text[sizeof system.nodename + 20] = "kept";
    uint32_t size = length;
    EXPECT_EQ(oruGetComputerName(text, &size), 0);
    EXPECT_EQ(size, length);
    EXPECT_EQ(oruGetWindowsDirectory(text, 8), 9U);
    EXPECT_EQ(oruGetSystemDirectory(nullptr, 20), 5U);
    EXPECT_STREQ(text, "kept");

    EXPECT_EQ(oruGetWindowsDirectory(text, 9), 8U);
    EXPECT_STREQ(text, "/Library");
    EXPECT_EQ(oruGetSystemDirectory(text, 5), 4U);
    EXPECT_STREQ(text, "/usr");
    size = length + 1;
    EXPECT_EQ(oruGetComputerName(text, &size), 1);
    EXPECT_EQ(size, length);
    EXPECT_STREQ(text, system.nodename);
}

TEST(System, UptimeIsTheTimeSinceBooting) {
    platform::script() = {};
    EXPECT_EQ(get_system_uptime_osx(), INT32_MAX);
    platform::script().boot_time = std::time(nullptr) - 1000;
    const long uptime = orumcomn_get_system_uptime();
    EXPECT_GE(uptime, 1000);
    EXPECT_LE(uptime, 1000 + 60);
}

TEST(System, TheHandlerSetsTheTerminationFlag) {
    EXPECT_EQ(bSigTermReceived, 0);
    const auto former = std::signal(SIGTERM, CatchSIGTERM);
    std::raise(SIGTERM);
    std::signal(SIGTERM, former);
    EXPECT_EQ(bSigTermReceived, 1);
}

}  // namespace
