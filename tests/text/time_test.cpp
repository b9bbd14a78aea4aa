// Time zones, time stamps, uptime, and the small editors of narrow text.
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "support/fault_injection.h"
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
        {std::nullopt, std::nullopt}, {"", std::nullopt}, {"A", "A"},
        {"XYZ-5", "XYZ-5"},           {longest, longest}, {longest + "0", std::nullopt},
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
    EXPECT_EQ(time.tm_year, 107);
    EXPECT_EQ(time.tm_mon, 0);
    EXPECT_EQ(time.tm_mday, 2);
    EXPECT_EQ(time.tm_hour, 1);
    EXPECT_EQ(time.tm_min, 0);
    EXPECT_EQ(time.tm_sec, 1);
    EXPECT_EQ(time.tm_wday, 2);
    EXPECT_EQ(time.tm_yday, 1);
    EXPECT_EQ(time.tm_isdst, 0);

    time = broken_down(1969, 12, 31, 23, 59, 59);
    EXPECT_EQ(vlrcomn_timegm(&time), -1);
    time = broken_down(2038, 1, 19, 3, 14, 7);
    EXPECT_EQ(vlrcomn_timegm(&time), INT32_MAX);
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
    const struct {
        std::string zone, name;
    } cases[] = {
        {"ABC5DEF", "ABC"},
        {"<" + std::string(63, 'A') + ">-3", std::string(63, 'A')},
        {"<" + std::string(64, 'A') + ">-3", std::string(63, 'A')},
    };
    for (const auto& [value, name] : cases) {
        const TimeZone zone(value);
        std::wstring text = L"former";
        EXPECT_TRUE(vlrcomn_gettimezone(text));
        EXPECT_EQ(text, std::wstring(name.begin(), name.end()));
    }
}

// Runs `stamp` until the second does not change meanwhile; returns it and what strftime says.
template <typename Text>
void expect_stamp(const std::function<Text()>& stamp, bool dashed,
                  std::tm* (*break_down)(const time_t*, std::tm*)) {
    Text text;
    time_t before, after;
    do {
        before = std::time(nullptr);
        text = stamp();
        after = std::time(nullptr);
    } while (before != after);
    std::tm time;
    char expected[64];
    break_down(&before, &time);
    std::strftime(expected, sizeof expected, dashed ? "%Y-%m-%d %H:%M:%S" : "%Y%m%d%H%M%S", &time);
    EXPECT_EQ(text, Text(expected, expected + std::strlen(expected)));
}

template <typename Character>
std::basic_string<Character> stamped(void (*create)(Character*, uint32_t), uint32_t size) {
    std::basic_string<Character> text(20, '#');
    create(text.data(), size);
    return text;
}

TEST(TimeStamps, TellLocalTimeAndUtc) {
    const TimeZone zone("XYZ-5:30");
    expect_stamp<std::string>(orumcomn_get_time_stamp_ansi, true, localtime_r);
    expect_stamp<std::wstring>(orumcomn_get_time_stamp_wide, true, localtime_r);
    const auto digits = [](auto create) {
        return [create] {
            const auto text = stamped(create, 20);
            EXPECT_EQ(text[14], 0);
            return text.substr(0, 14);
        };
    };
    expect_stamp<std::string>(digits(orumcomn_CreateGmtTimeStampA), false, gmtime_r);
    expect_stamp<std::wstring>(digits(orumcomn_CreateGmtTimeStampW), false, gmtime_r);
    expect_stamp<std::string>(digits(orumcomn_CreateLocalTimeStampA), false, localtime_r);
    expect_stamp<std::wstring>(digits(orumcomn_CreateLocalTimeStampW), false, localtime_r);
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

TEST(TextEditing, TrimsAndConvertsCase) {
    const struct {
        std::string text, without_leading, without_trailing;
    } cases[] = {
        {"", "", ""},
        {" \t\n\v\f\r", "", ""},
        {" a b ", "a b ", " a b"},
        {"a", "a", "a"},
        {"\xA0x\x85", "\xA0x\x85", "\xA0x\x85"},  // no white space in the C locale
    };
    for (const auto& [text, without_leading, without_trailing] : cases) {
        EXPECT_EQ(orumcomn_strip_leading_whitespace(text), without_leading);
        EXPECT_EQ(orumcomn_strip_trailing_whitespace(text), without_trailing);
    }
    EXPECT_EQ(orumcomn_convert_to_upper("@aZz[`{\xE4"), "@AZZ[`{\xE4");
    EXPECT_EQ(orumcomn_convert_to_lower("@aZz[`{\xC4"), "@azz[`{\xC4");
}

TEST(TextEditing, EditsInPlace) {
    const auto edited = [](void (*edit)(char*), std::string text) {
        text.resize(text.size() + 2, '#');
        text[text.size() - 2] = '\0';
        edit(text.data());
        return std::string(text.c_str());
    };
    EXPECT_EQ(edited(orumcomn_chop_semicolon, "a;b;c"), "a");
    EXPECT_EQ(edited(orumcomn_chop_semicolon, "abc"), "abc");
    EXPECT_EQ(edited(orumcomn_append_backslash_check, "/a"), "/a/");
    EXPECT_EQ(edited(orumcomn_append_backslash_check, "/a/"), "/a/");
    EXPECT_EQ(edited(orumcomn_append_backslash_check, "\\"), "\\/");
    EXPECT_EQ(edited(orumcomn_append_backslash_check, ""), "/");
    orumcomn_chop_semicolon(nullptr);
    orumcomn_append_backslash_check(nullptr);
    orumcomn_delay(1000);
}

TEST(TextEditing, WritesNumbers) {
    EXPECT_EQ(orumcomn_long_to_ansi_string(-5), "-5");
    EXPECT_EQ(orumcomn_long_to_wide_string(0), L"0");
    EXPECT_EQ(orumcomn_long_to_ansi_string(LONG_MIN), std::to_string(LONG_MIN));
    EXPECT_EQ(orumcomn_long_to_wide_string(LONG_MAX), std::to_wstring(LONG_MAX));
}

TEST(ByteOrder, IsThatOfTheMachine) {
    EXPECT_EQ(isBigEndian(), __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__);
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
    EXPECT_TRUE(without_memory([&] { return orumcomn_convert_to_lower(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_strip_leading_whitespace(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_strip_trailing_whitespace(narrow); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_long_to_wide_string(LONG_MIN); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_get_time_stamp_ansi(); }));
    EXPECT_TRUE(without_memory([&] { return orumcomn_get_time_stamp_wide(); }));
}

}  // namespace
