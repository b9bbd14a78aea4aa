// Uptime from a scripted boot time.
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

#include "support/scripted_platform.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

TEST(Uptime, IsTheTimeSinceBooting) {
    platform::script() = {};
    EXPECT_EQ(get_system_uptime_osx(), INT32_MAX);
    platform::script().boot_time = std::time(nullptr) - 1000;
    const long uptime = orumcomn_get_system_uptime();
    EXPECT_GE(uptime, 1000);
    EXPECT_LE(uptime, 1000 + 60);
}
