#include <gmock/gmock.h>
#include <sys/times.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <future>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/system.h"
#include "vlrcomn/thread.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

class Times : public testing::Test {
protected:
    ~Times() override { set_zone(nullptr); }

    static void set_zone(const char* zone) {
        zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

TEST_F(Times, TimegmLeavesTheZoneAsPromised) {
    // A zone of 1024 characters: a long name and an offset.
    const std::string longest = "<" + std::string(1020, 'A') + ">-3", longer = longest + "0";
    const char* const zones[] = {nullptr, "", longest.c_str(), longer.c_str()};
    for (const char* before : zones) {
        set_zone(before);
        std::tm time = {0, 0, 0, 1, 0, 70};
        EXPECT_EQ(vlrcomn_timegm(&time), 0);
        EXPECT_STREQ(std::getenv("TZ"), before == zones[2] ? before : nullptr);
    }
}

TEST_F(Times, TimegmNormalisesAsMktimeDoes) {
    set_zone("EST5EDT,M3.2.0,M11.1.0");
    std::tm time = {61, -1, 25, 32, 11, 106};      // seconds first, months from 0, years from 1900
    time.tm_isdst = 1;                             // not heeded: UTC has no summer time
    EXPECT_EQ(vlrcomn_timegm(&time), 1167699601);  // 2007-01-02 01:00:01 less one minute, plus 60 s
    char text[64];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S day %w %j", &time);
    EXPECT_STREQ(text, "2007-01-02 01:00:01 day 2 002");
    time = {8, 14, 3, 19, 0, 138};
    EXPECT_EQ(vlrcomn_timegm(&time), sizeof(time_t) == 4 ? -1 : INT64_C(0x80000000));
    EXPECT_EQ(vlrcomn_timegm(nullptr), -1);
}

TEST_F(Times, TheStandardZonesNameIsCut) {
    std::wstring told;
    set_zone("EST5EDT");
    EXPECT_TRUE(vlrcomn_gettimezone(told));
    EXPECT_EQ(told, L"EST");
    std::string long_name(64, 'A');
    tzname[0] = long_name.data();
    EXPECT_TRUE(vlrcomn_gettimezone(told));
    EXPECT_EQ(told, std::wstring(63, L'A'));
    tzname[0] = nullptr;
    EXPECT_FALSE(vlrcomn_gettimezone(told));
    EXPECT_EQ(told.size(), 63u) << "left alone";
}

TEST_F(Times, TimegmShowsOtherThreadsNoOtherZone) {
    set_zone("XYZ-5");
    const auto caller = std::async(std::launch::async, [] {
        for (int i = 0; i < 20000; ++i) {
            std::tm time = {0, 0, 0, 31, 11, 106};
            vlrcomn_timegm(&time);
        }
    });
    while (caller.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        std::tm local;
        const time_t noon = 12 * 3600;
        ASSERT_EQ(localtime_r(&noon, &local)->tm_hour, 17);
    }
}

template <typename Character>
std::basic_string<Character> stamped(void (*create)(Character*, uint32_t), uint32_t size) {
    std::basic_string<Character> text(20, '#');
    create(text.data(), size);
    return text;
}

TEST_F(Times, StampsTellLocalTimeAndUtc) {
    set_zone("XYZ-5:30");
    time_t now;
    std::string dashed, utc, narrow;
    std::wstring local, wide;
    oruSystemTime system_time;
    do {
        now = std::time(nullptr);
        dashed = orumcomn_get_time_stamp_ansi();
        utc = stamped(orumcomn_CreateGmtTimeStampA, 15);
        wide = orumcomn_get_time_stamp_wide();
        local = stamped(orumcomn_CreateLocalTimeStampW, 17);
        narrow = stamped(orumcomn_CreateLocalTimeStampA, 15);
        oruGetSystemTime(&system_time);
    } while (now != std::time(nullptr));
    char text[64];
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", std::gmtime(&now));
    EXPECT_EQ(utc, text + std::string("\0#####", 6));
    const std::tm t = *std::localtime(&now);
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &t);
    EXPECT_EQ(dashed, text);
    EXPECT_EQ(wide, orumcomn_ansi_to_wide(text));
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &t);
    EXPECT_EQ(local, orumcomn_ansi_to_wide(text) + std::wstring(L"\0\0\0###", 6));
    EXPECT_EQ(narrow, text + std::string("\0#####", 6));
    std::array<uint16_t, 8> record;
    std::memcpy(&record, &system_time, sizeof record);
    EXPECT_THAT(record, testing::ElementsAre(t.tm_year + 1900, t.tm_mon + 1, t.tm_wday, t.tm_mday,
                                             t.tm_hour, t.tm_min, t.tm_sec, 0));
    // Where it does not fit, narrow text is terminated and wide text is not.
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampA, 10).substr(9), std::string("\0##########", 11));
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampW, 14).find(L'#'), 14u);
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampW, 0)[0], L'#');
    orumcomn_CreateLocalTimeStampA(nullptr, 15);
    oruGetSystemTime(nullptr);
}

TEST(TextEditing, KnowsTheCLocaleOnly) {
    EXPECT_EQ(orumcomn_strip_leading_whitespace(" \t\n\v\f\r\xA0x "), "\xA0x ");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace(" x \t\n\v\f\r"), " x");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace("  "), "");
    EXPECT_EQ(orumcomn_convert_to_upper("@aZz[`{\xE4"), "@AZZ[`{\xE4");
    EXPECT_EQ(orumcomn_convert_to_lower("@aZz[`{\xC4"), "@azz[`{\xC4");
    char text[] = "/a;b;c";
    orumcomn_chop_semicolon(text);
    EXPECT_STREQ(text, "/a");
    orumcomn_append_backslash_check(text);
    orumcomn_append_backslash_check(text);
    EXPECT_STREQ(text, "/a/");
    char after_slash[] = "/\0##";
    orumcomn_append_backslash_check(after_slash + 1);
    EXPECT_EQ(std::string(after_slash, 4), std::string("//\0#", 4));
    orumcomn_chop_semicolon(nullptr);
    orumcomn_append_backslash_check(nullptr);
}

TEST(TextEditing, ReturnsEmptyTextWhenMemoryRunsOut) {
    const std::string narrow(100, 'a');  // too long for the string's own buffer
    fault_injection::FailNth failure(1, "malloc");
    const bool empty = orumcomn_ansi_to_wide(narrow).empty();
    failure.disarm();
    EXPECT_TRUE(empty && failure.fired() != nullptr);
}

TEST(System, TextsFitOrTellTheSizeThatTheyNeed) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    char text[sizeof system.nodename + 20] = "kept";
    uint32_t size = static_cast<uint32_t>(std::strlen(system.nodename));
    EXPECT_EQ(oruGetComputerName(text, &size), 0);
    EXPECT_EQ(oruGetWindowsDirectory(text, 8), 9U);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(oruGetWindowsDirectory(text, 9), 8U);
    EXPECT_STREQ(text, "/Library");
    EXPECT_EQ(oruGetSystemDirectory(text, 5), 4U);
    EXPECT_EQ(oruGetSystemDirectory(nullptr, 5), 5U);
    EXPECT_EQ(oruGetComputerName(nullptr, &size), 0);
    EXPECT_EQ(oruGetComputerName(text, nullptr), 0);
    std::memset(text, '#', sizeof text);
    ++size;
    EXPECT_EQ(oruGetComputerName(text, &size), 1);
    EXPECT_STREQ(text, system.nodename);
    EXPECT_EQ(size, std::strlen(text));
    EXPECT_EQ(text[size + 1], '#') << "written on";
}

TEST(System, TicksAreMillisecondsOfTheSystemsClock) {
    const auto milliseconds = [] {
        tms unused;
        return static_cast<uint32_t>(times(&unused)) * 1000u /
               static_cast<uint32_t>(sysconf(_SC_CLK_TCK));
    };
    uint32_t before, ticks, after;
    do {
        before = milliseconds();
        ticks = oruGetTickCount();
        after = milliseconds();
    } while (after < before);  // it wrapped
    EXPECT_TRUE(before <= ticks && ticks <= after) << before << ' ' << ticks << ' ' << after;
}

TEST(System, ASignalSetsTheFlagAndTheEmptyCallsDoNothing) {
    ASSERT_EQ(bSigTermReceived, 0);
    const auto former = std::signal(SIGTERM, CatchSIGTERM);
    std::raise(SIGTERM);
    std::signal(SIGTERM, former);
    EXPECT_EQ(bSigTermReceived, 1);
    EXPECT_EQ(oruTranslateMessage(nullptr), 1);
    const auto start = std::chrono::steady_clock::now();
    orumcomn_delay(INT32_MAX);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::hours(1));
}

TEST(System, UptimeIsTheTimeSinceBooting) {
    platform::script() = {};
    EXPECT_EQ(get_system_uptime_osx(), INT32_MAX);
    platform::script().boot_time = std::time(nullptr) - 1000;
    EXPECT_NEAR(static_cast<double>(orumcomn_get_system_uptime()), 1030, 30);
}

}  // namespace
