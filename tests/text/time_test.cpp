// Time zones, time stamps, uptime, and the small editors of narrow text.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string>
#include <thread>

#include "support/fault_injection.h"
#include "vlrcomn/system.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

// Sets or unsets "TZ" and puts it back at the end.
class TimeZone {
public:
    explicit TimeZone(const std::optional<std::string>& zone) : former_(current()) { set(zone); }
    ~TimeZone() { set(former_); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

    static std::optional<std::string> current() {
        const char* const zone = std::getenv("TZ");
        return zone != nullptr ? std::optional<std::string>(zone) : std::nullopt;
    }

private:
    static void set(const std::optional<std::string>& zone) {
        if (zone) {
            setenv("TZ", zone->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    std::optional<std::string> former_;
};

std::tm broken_down(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm time = {};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

TEST(Timegm, LeavesTheZoneAsPromised) {
    // A zone of 1024 characters: a long name and an offset.
    const std::string longest = "<" + std::string(1020, 'A') + ">-3";
    ASSERT_EQ(longest.size(), 1024U);
    const struct {
        std::optional<std::string> before, after;
    } cases[] = {
        {std::nullopt, std::nullopt},
        {"", std::nullopt},
        {longest, longest},
        {longest + "0", std::nullopt},
    };
    for (const auto& [before, after] : cases) {
        SCOPED_TRACE(before.value_or("unset"));
        const TimeZone zone(before);
        std::tm time = broken_down(1970, 1, 1);
        EXPECT_EQ(vlrcomn_timegm(&time), 0);
        EXPECT_EQ(TimeZone::current(), after);
        EXPECT_EQ(vlrcomn_timegm(nullptr), -1);
    }
}

TEST(Timegm, NormalisesAsMktimeDoes) {
    const TimeZone zone("EST5EDT,M3.2.0,M11.1.0");
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

// Without "TZ" set for a moment no other thread can read the local time wrongly.
TEST(Timegm, ShowsOtherThreadsNoOtherZone) {
    const TimeZone zone("XYZ-5");
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

TEST(ZoneName, IsCutAtSixtyThreeBytes) {
    for (const size_t length : {3U, 63U, 64U}) {
        const TimeZone zone("<" + std::string(length, 'A') + ">-3");
        std::wstring text = L"former";
        EXPECT_TRUE(vlrcomn_gettimezone(text));
        EXPECT_EQ(text, std::wstring(std::min<size_t>(length, 63), L'A'));
    }
}

// Runs `stamp` until the second does not change meanwhile; expects what put_time says.
template <typename Stamp>
void expect_stamp(Stamp stamp, const char* format,
                  std::tm* (*break_down)(const time_t*, std::tm*)) {
    decltype(stamp()) text;
    time_t before, after;
    do {
        before = std::time(nullptr);
        text = stamp();
        after = std::time(nullptr);
    } while (before != after);
    std::tm time;
    std::ostringstream stream;
    stream << std::put_time(break_down(&before, &time), format);
    const std::string expected = stream.str();
    EXPECT_EQ(text, decltype(text)(expected.begin(), expected.end()));
}

template <typename Character>
std::basic_string<Character> stamped(void (*create)(Character*, uint32_t), uint32_t size) {
    std::basic_string<Character> text(20, '#');
    create(text.data(), size);
    return text;
}

TEST(TimeStamps, TellLocalTimeAndUtc) {
    const TimeZone zone("XYZ-5:30");
    const char* const dashed = "%Y-%m-%d %H:%M:%S";
    expect_stamp(orumcomn_get_time_stamp_ansi, dashed, localtime_r);
    expect_stamp(orumcomn_get_time_stamp_wide, dashed, localtime_r);
    const auto expect_digits = [](auto create, auto break_down) {
        const auto digits = [create] { return stamped(create, 20).substr(0, 15); };
        expect_stamp([&] { return digits().substr(0, 14); }, "%Y%m%d%H%M%S", break_down);
        EXPECT_EQ(digits().back(), 0);
    };
    expect_digits(orumcomn_CreateGmtTimeStampA, gmtime_r);
    expect_digits(orumcomn_CreateGmtTimeStampW, gmtime_r);
    expect_digits(orumcomn_CreateLocalTimeStampA, localtime_r);
    expect_digits(orumcomn_CreateLocalTimeStampW, localtime_r);
    const auto system_time = [] {
        oruSystemTime r;
        oruGetSystemTime(&r);
        char text[64];
        std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d %d %d", r.year, r.month, r.day,
                      r.hour, r.minute, r.second, r.day_of_week, r.milliseconds);
        return std::string(text);
    };
    expect_stamp(system_time, "%Y%m%d%H%M%S %w 0", localtime_r);
}

TEST(TimeStamps, KeepToTheBuffer) {
    // Narrow text is cut and terminated.
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampA, 10).substr(9), std::string("\0##########", 11));
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampA, 0), std::string(20, '#'));
    // Wide text has no terminator up to size 14 and is filled up with zeros past it.
    EXPECT_EQ(stamped(orumcomn_CreateGmtTimeStampW, 14).substr(14), L"######");
    EXPECT_EQ(stamped(orumcomn_CreateLocalTimeStampW, 17).substr(13).substr(1),
              std::wstring(L"\0\0\0###", 6));
    EXPECT_EQ(stamped(orumcomn_CreateLocalTimeStampW, 0), std::wstring(20, L'#'));
    orumcomn_CreateGmtTimeStampA(nullptr, 20);
    orumcomn_CreateLocalTimeStampW(nullptr, 20);
}

TEST(TextEditing, KnowsTheCLocaleOnly) {
    const std::string blanks = " \t\n\v\f\r";
    EXPECT_EQ(orumcomn_strip_leading_whitespace(blanks + "a b "), "a b ");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace(" a b" + blanks), " a b");
    EXPECT_EQ(orumcomn_strip_leading_whitespace(blanks), "");
    EXPECT_EQ(orumcomn_strip_trailing_whitespace(blanks), "");
    EXPECT_EQ(orumcomn_strip_leading_whitespace("\xA0x"), "\xA0x");
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
    text[0] = '\0';
    orumcomn_append_backslash_check(text);
    EXPECT_STREQ(text, "/");
    orumcomn_chop_semicolon(nullptr);
    orumcomn_append_backslash_check(nullptr);
}

TEST(TextEditing, WritesNumbers) {
    EXPECT_EQ(orumcomn_long_to_ansi_string(LONG_MIN), std::to_string(LONG_MIN));
    EXPECT_EQ(orumcomn_long_to_wide_string(LONG_MAX), std::to_wstring(LONG_MAX));
}

// Results too long for the string's own buffer.
TEST(TextFunctions, ReturnEmptyTextWhenMemoryRunsOut) {
    const std::string narrow(100, 'a');
    const std::wstring wide(100, L'a');
    const auto without_memory = [](const auto& call) {
        fault_injection::FailNth failure(1, "malloc");
        const bool empty = call().empty();
        failure.disarm();
        return empty && failure.fired() != nullptr;
    };
    EXPECT_TRUE(without_memory([&] { return orumcomn_wide_to_ansi(wide); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_ansi_to_wide(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_convert_to_upper(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_strip_leading_whitespace(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_long_to_wide_string(LONG_MIN); }));
}

}  // namespace
