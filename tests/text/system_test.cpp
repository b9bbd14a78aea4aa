// System folders, computer name, uptime; time zones, time stamps; the small editors of narrow text.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwctype>
#include <iomanip>
#include <sstream>
#include <string>
#include <thread>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/system.h"
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

std::tm broken_down(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {second, minute, hour, day, month - 1, year - 1900};
}

TEST_F(Times, TimegmLeavesTheZoneAsPromised) {
    // A zone of 1024 characters: a long name and an offset.
    const std::string longest = "<" + std::string(1020, 'A') + ">-3", longer = longest + "0";
    ASSERT_EQ(longest.size(), 1024U);
    for (const char* before :
         {static_cast<const char*>(nullptr), "", longest.c_str(), longer.c_str()}) {
        set_zone(before);
        std::tm time = broken_down(1970, 1, 1);
        EXPECT_EQ(vlrcomn_timegm(&time), 0);
        EXPECT_STREQ(std::getenv("TZ"), before == longest.c_str() ? before : nullptr);
    }
}

TEST_F(Times, TimegmNormalisesAsMktimeDoes) {
    set_zone("EST5EDT,M3.2.0,M11.1.0");
    std::tm time = broken_down(2006, 12, 32, 25, -1, 61);
    time.tm_isdst = 1;                             // not heeded: UTC has no summer time
    EXPECT_EQ(vlrcomn_timegm(&time), 1167699601);  // 2007-01-02 01:00:01 less one minute, plus 60 s
    char text[64];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S day %w %j", &time);
    EXPECT_STREQ(text, "2007-01-02 01:00:01 day 2 002");
    EXPECT_EQ(time.tm_isdst, 0);

    time = broken_down(1969, 12, 31, 23, 59, 59);
    EXPECT_EQ(vlrcomn_timegm(&time), -1);
    time = broken_down(2038, 1, 19, 3, 14, 8);
    EXPECT_EQ(vlrcomn_timegm(&time), sizeof(time_t) == 4 ? -1 : INT64_C(0x80000000));
}

TEST_F(Times, TimegmShowsOtherThreadsNoOtherZone) {
    set_zone("XYZ-5");
    std::atomic<bool> done{false};
    std::thread caller([&] {
        for (int i = 0; i < 20000; ++i) {
            std::tm time = broken_down(2006, 12, 31);
            vlrcomn_timegm(&time);
        }
        done = true;
    });
    int wrong = 0;
    while (!done) {
        const time_t noon = 12 * 3600;
        std::tm local;
        wrong += localtime_r(&noon, &local)->tm_hour != 17 ? 1 : 0;
    }
    caller.join();
    EXPECT_EQ(wrong, 0);
}

// Expects what put_time says of a moment during the call: such texts sort by time.
template <typename Stamp>
void expect_stamp(Stamp stamp, const char* format, std::tm* (*break_down)(const time_t*)) {
    const auto told = [&] {
        const time_t now = std::time(nullptr);
        std::ostringstream stream;
        stream << std::put_time(break_down(&now), format);
        return stream.str();
    };
    const std::string before = told();
    const auto text = stamp();
    EXPECT_LE(before, std::string(text.begin(), text.end()));
    EXPECT_GE(told(), std::string(text.begin(), text.end()));
}

template <typename Character>
std::basic_string<Character> stamped(void (*create)(Character*, uint32_t), uint32_t size) {
    std::basic_string<Character> text(20, '#');
    create(text.data(), size);
    return text;
}

TEST_F(Times, StampsTellLocalTimeAndUtc) {
    set_zone("XYZ-5:30");
    expect_stamp(orumcomn_get_time_stamp_ansi, "%Y-%m-%d %H:%M:%S", std::localtime);
    const auto gmt = [] { return stamped(orumcomn_CreateGmtTimeStampA, 15).substr(0, 14); };
    expect_stamp(gmt, "%Y%m%d%H%M%S", std::gmtime);
    const auto local = [] { return stamped(orumcomn_CreateLocalTimeStampW, 15).substr(0, 14); };
    expect_stamp(local, "%Y%m%d%H%M%S", std::localtime);
    const auto system_time = [] {
        oruSystemTime r;
        oruGetSystemTime(&r);
        char text[64];
        std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d %d %d", r.year, r.month, r.day,
                      r.hour, r.minute, r.second, r.day_of_week, r.milliseconds);
        return std::string(text);
    };
    expect_stamp(system_time, "%Y%m%d%H%M%S %w 0", std::localtime);
}

TEST_F(Times, StampsKeepToTheBuffer) {
    // Narrow text is cut and terminated.
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampA, 10).substr(9), std::string("\0##########", 11));
    EXPECT_EQ(stamped(orumcomn_CreateLocalTimeStampA, 0), std::string(20, '#'));
    // Wide text has no terminator up to size 14 and is filled up with zeros past it.
    EXPECT_TRUE(std::iswdigit(static_cast<wint_t>(stamped(orumcomn_CreateGmtTimeStampW, 14)[13])));
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampW, 14).substr(14), L"######");
    EXPECT_EQ(stamped(orumcomn_CreateLocalTimeStampW, 17).substr(14),
              std::wstring(L"\0\0\0###", 6));
}

TEST(TextEditing, KnowsTheCLocaleOnly) {
    EXPECT_EQ(orumcomn_strip_leading_whitespace(" \t\n\v\f\r\xA0x "), "\xA0x ");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace(" x \t\n\v\f\r"), " x");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace("  "), "");
    EXPECT_EQ(orumcomn_convert_to_upper("@aZz[`{\xE4"), "@AZZ[`{\xE4");
    EXPECT_EQ(orumcomn_convert_to_lower("@aZz[`{\xC4"), "@azz[`{\xC4");
}

TEST(TextEditing, EditsInPlace) {
    char text[] = "/a;b;c";
    orumcomn_chop_semicolon(text);
    EXPECT_STREQ(text, "/a");
    for (const char* result : {"/a/", "/a/"}) {
        orumcomn_append_backslash_check(text);
        EXPECT_STREQ(text, result);
    }
    char after_slash[] = "/\0##";
    orumcomn_append_backslash_check(after_slash + 1);
    EXPECT_EQ(std::string(after_slash, 4), std::string("//\0#", 4));
}

TEST(TextFunctions, ReturnEmptyTextWhenMemoryRunsOut) {
    const std::string narrow(100, 'a');  // too long for the string's own buffer
    fault_injection::FailNth failure(1, "malloc");
    const bool empty = orumcomn_ansi_to_wide(narrow).empty();
    failure.disarm();
    EXPECT_TRUE(empty);
    EXPECT_STREQ(failure.fired(), "malloc");
}

TEST(System, TextsFitOrTellTheSizeThatTheyNeed) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    const uint32_t length = static_cast<uint32_t>(std::strlen(system.nodename));
    char text[sizeof system.nodename + 20] = "kept";
    uint32_t size = length;
    EXPECT_EQ(oruGetComputerName(text, &size), 0);
    EXPECT_EQ(oruGetWindowsDirectory(text, 8), 9U);
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

}  // namespace
