// System time, folders, computer name, termination flag.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <csignal>
#include <cstring>
#include <ctime>
#include <string>

#include "vlrcomn/system.h"

namespace {

TEST(SystemTime, IsLocal) {
    setenv("TZ", "XYZ-5:30", 1);
    tzset();
    oruSystemTime record;
    time_t before, after;
    do {
        before = std::time(nullptr);
        oruGetSystemTime(&record);
        after = std::time(nullptr);
    } while (before != after);
    std::tm time;
    localtime_r(&before, &time);
    const uint16_t expected[] = {
        static_cast<uint16_t>(time.tm_year + 1900), static_cast<uint16_t>(time.tm_mon + 1),
        static_cast<uint16_t>(time.tm_wday),        static_cast<uint16_t>(time.tm_mday),
        static_cast<uint16_t>(time.tm_hour),        static_cast<uint16_t>(time.tm_min),
        static_cast<uint16_t>(time.tm_sec),         0};
    EXPECT_EQ(std::memcmp(&record, expected, sizeof expected), 0);
    unsetenv("TZ");
    tzset();
    oruGetSystemTime(nullptr);
}

TEST(SystemFolders, TellTheirLengthOrTheSizeThatTheyNeed) {
    const struct {
        uint32_t (*get)(char*, uint32_t);
        uint32_t size, result;
        const char* text;
    } cases[] = {
        {oruGetWindowsDirectory, 0, 9, "####"},     {oruGetWindowsDirectory, 8, 9, "####"},
        {oruGetWindowsDirectory, 9, 8, "/Library"}, {oruGetWindowsDirectory, 20, 8, "/Library"},
        {oruGetSystemDirectory, 4, 5, "####"},      {oruGetSystemDirectory, 5, 4, "/usr"},
    };
    for (const auto& [get, size, result, text] : cases) {
        char buffer[20] = "####";
        EXPECT_EQ(get(buffer, size), result) << size;
        EXPECT_STREQ(buffer, text) << size;
        EXPECT_EQ(get(nullptr, size), std::strlen(text) == result ? result + 1 : result);
    }
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
    EXPECT_EQ(oruTranslateMessage(nullptr), 1);
}

}  // namespace
