#include <sys/times.h>
#include <sys/utsname.h>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/system.h"
#include "vlrcomn/thread.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

struct Times : testing::Test {
    ~Times() override { set_zone(nullptr); }

    static void set_zone(const char* zone) {
        zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

TEST_F(Times, TimegmLeavesTheZoneAsPromised) {
    // A zone of 1024 characters: a long name and an offset.
    const std::string longest = "<" + std::string(1020, 'A') + ">-3", longer = longest + "0";
    for (const char* before :
         {longest.c_str(), longer.c_str(), "", static_cast<const char*>(nullptr)}) {
        set_zone(before);
        std::tm time = {0, 0, 0, 1, 0, 70};
        EXPECT_EQ(vlrcomn_timegm(&time), 0);
        EXPECT_STREQ(std::getenv("TZ"), before == longest.c_str() ? before : nullptr);
    }
}

TEST_F(Times, TimegmNormalisesAsMktimeDoes) {
    set_zone("EST5EDT,M3.2.0,M11.1.0");
    std::tm time = {61, -1, 25, 32, 11, 106, 0, 0, 1};  // UTC does not heed summer time
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
    EXPECT_TRUE(vlrcomn_gettimezone(told) && told == L"EST");
    std::string long_name(64, 'A');
    tzname[0] = long_name.data();
    EXPECT_TRUE(vlrcomn_gettimezone(told) && told == std::wstring(63, L'A'));
    tzname[0] = nullptr;
    EXPECT_TRUE(!vlrcomn_gettimezone(told) && told.size() == 63) << "left alone";
}

TEST_F(Times, TimegmShowsOtherThreadsNoOtherZone) {
    set_zone("XYZ-5");
    together(2, [](int number) {
        for (int i = 0; i < 20000; ++i) {
            std::tm time = {0, 0, 0, 31, 11, 106};
            const time_t noon = 12 * 3600;
            ASSERT_TRUE(number == 0 ? vlrcomn_timegm(&time) > 0
                                    : localtime_r(&noon, &time)->tm_hour == 17);
        }
    });
}

template <typename Character>
static std::basic_string<Character> stamped(void (*create)(Character*, uint32_t), uint32_t size) {
    std::basic_string<Character> text(20, '#');
    create(text.data(), size);
    return text;
}

TEST_F(Times, StampsTellLocalTimeAndUtc) {
    set_zone("XYZ-5:30");
    time_t now;
    std::string told;
    std::wstring wide;
    oruSystemTime system_time;
    do {
        now = std::time(nullptr);
        told = stamped(orumcomn_CreateGmtTimeStampA, 15) +
               stamped(orumcomn_CreateLocalTimeStampA, 15) + orumcomn_get_time_stamp_ansi();
        wide = stamped(orumcomn_CreateLocalTimeStampW, 17) + orumcomn_get_time_stamp_wide();
        oruGetSystemTime(&system_time);
    } while (now != std::time(nullptr));
    const std::tm t = *std::localtime(&now);
    char utc[64], text[64];
    std::strftime(utc, sizeof utc, "%Y%m%d%H%M%S", std::gmtime(&now));
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S%Y-%m-%d %H:%M:%S", &t);
    const std::string local(text, 14), dashed(text + 14), rest("\0#####", 6);
    EXPECT_EQ(told, utc + rest + local + rest + dashed);
    EXPECT_EQ(wide, orumcomn_ansi_to_wide(local) + std::wstring(L"\0\0\0###", 6) +
                        orumcomn_ansi_to_wide(dashed));
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
    const auto convert = [&] { return orumcomn_ansi_to_wide(narrow).size(); };
    EXPECT_EQ(fault_injection::failing(1, "malloc", convert), 0U);
}

TEST(System, TextsFitOrTellTheSizeThatTheyNeed) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    char text[sizeof system.nodename + 20] = "kept";
    auto size = static_cast<uint32_t>(std::strlen(system.nodename));
    EXPECT_EQ(oruGetComputerName(text, &size) + oruGetComputerName(nullptr, &size), 0);
    EXPECT_EQ(oruGetComputerName(text, nullptr), 0);
    EXPECT_EQ(oruGetWindowsDirectory(text, 8), 9U);
    EXPECT_STREQ(text, "kept");
    EXPECT_TRUE(oruGetWindowsDirectory(text, 9) == 8 && text == std::string("/Library"));
    EXPECT_EQ(oruGetSystemDirectory(text, 5), 4U);
    EXPECT_EQ(oruGetSystemDirectory(nullptr, 5), 5U);
    std::memset(text, '#', sizeof text);
    ++size;
    EXPECT_EQ(oruGetComputerName(text, &size), 1);
    EXPECT_EQ(size, std::strlen(system.nodename));
    EXPECT_EQ(std::string(text, size + 2), system.nodename + std::string("\0#", 2));
}

TEST(System, TicksAreMillisecondsOfTheSystemsClock) {
    const auto milliseconds = [a_second = static_cast<uint32_t>(sysconf(_SC_CLK_TCK))] {
        tms unused;
        return static_cast<uint32_t>(times(&unused)) * 1000u / a_second;
    };
    const uint32_t before = milliseconds(), ticks = oruGetTickCount(), after = milliseconds();
    EXPECT_LE(ticks - before, after - before) << "modulo 2^32";
}

TEST(System, ASignalSetsTheFlagAndTheEmptyCallsDoNothing) {
    ASSERT_EQ(bSigTermReceived, 0);
    const auto former = std::signal(SIGTERM, CatchSIGTERM);
    std::raise(SIGTERM);
    std::signal(SIGTERM, former);
    EXPECT_TRUE(bSigTermReceived == 1 && oruTranslateMessage(nullptr) == 1);
    orumcomn_delay(INT32_MAX);
}

TEST(System, UptimeIsTheTimeSinceBooting) {
    platform::script() = {};
    EXPECT_EQ(get_system_uptime_osx(), INT32_MAX);
    platform::script().boot_time = std::time(nullptr) - 1000;
    EXPECT_NEAR(static_cast<double>(orumcomn_get_system_uptime()), 1030, 30);
}
