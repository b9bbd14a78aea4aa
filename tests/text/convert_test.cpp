// Numbers and text; text in the locale's encoding and in UTF-8. fuzz/text holds every conversion of UTF-8
// against iconv.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <string>

#include "vlrcomn/convert.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

TEST(NumberText, ByRadix) {
    const struct {
        int64_t value;
        int radix;
        const char *in_32_bits, *in_64_bits;
    } cases[] = {
        {0, 10, "0", "0"},
        {-1, 16, "ffffffff", "ffffffffffffffff"},
        {INT32_MIN, 10, "-2147483648", "-2147483648"},
        {INT64_MIN, 10, "0", "-9223372036854775808"},
        {INT64_MIN, 8, "0", "1000000000000000000000"},
    };
    char text[24];
    for (const auto& [value, radix, in_32_bits, in_64_bits] : cases) {
        EXPECT_STREQ(oruItoa(static_cast<int32_t>(value), text, radix), in_32_bits);
        EXPECT_STREQ(oruI64toa(value, text, radix), in_64_bits);
    }
    EXPECT_STREQ(oruUltot(UINT32_MAX, text, 10), "-1") << "as a signed number";
    for (const int radix : {-10, 0, 2, 36}) {
        EXPECT_EQ(oruI64toa(255, text, radix), nullptr);
        EXPECT_STREQ(text, "-1");
    }
}

TEST(NumberText, EveryByteCountsAsADigit) {
    EXPECT_EQ(oruAtoi64("-1"), -29);
    EXPECT_EQ(oruAtoi64("\xFF"), -49) << "a byte is signed on every host";
    EXPECT_EQ(oruTtoi64("18446744073709551617"), 1);
}

TEST(LocaleText, LimitsAreThoseOfTheDestination) {
    for (const size_t limit : {0U, 3U, 5U, 6U, 9U}) {
        SCOPED_TRACE(limit);
        const size_t written = std::min<size_t>(limit, 5);
        const size_t touched = std::min<size_t>(limit, 6);
        std::wstring wide(10, L'#');
        EXPECT_EQ(oruStandardAtoU("hello", limit, wide.data()), written);
        EXPECT_EQ(wide, std::wstring(L"hello\0", touched) + std::wstring(10 - touched, L'#'));
    }
}

TEST(LocaleText, TheLocaleDecidesTheEncoding) {
    char narrow[16] = {};
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), 0U);
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
        GTEST_SKIP() << "no UTF-8 locale";
    }
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), 3U);
    EXPECT_STREQ(narrow, "\xE2\x82\xAC");
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", 2, narrow), 0U) << "no character is torn";
    wchar_t wide[16];
    EXPECT_EQ(oruStandardAtoU("ab\xE2\x82", 16, wide), 0U);
    EXPECT_EQ(oruStandardAtoU("\xE2\x82\xAC", 16, wide), 1U) << "the fault does not carry over";
    std::setlocale(LC_CTYPE, "C");
}

TEST(Utf8, StopsBeforeTheFirstFault) {
    EXPECT_EQ(orumcomn_wide_to_ansi(L"\x80\u20AC\xFFFF"), "\xC2\x80\xE2\x82\xAC\xEF\xBF\xBF");
    EXPECT_EQ(orumcomn_wide_to_ansi({L'A', static_cast<wchar_t>(0xD800), L'Z'}), "A");
    EXPECT_EQ(orumcomn_wide_to_ansi({L'A', static_cast<wchar_t>(0x110000), L'Z'}), "A");
    for (const std::string fault : {"\x80", "\xC0\x80", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
                                    "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        SCOPED_TRACE(testing::PrintToString(fault));
        EXPECT_EQ(orumcomn_ansi_to_wide("A" + fault), L"A");
        // Past eight letters, which are copied at once.
        EXPECT_EQ(orumcomn_ansi_to_wide("ABCDEFGHI" + fault + "Z"), L"ABCDEFGHI");
    }
    const uint16_t one = 1;
    EXPECT_EQ(isBigEndian(), *reinterpret_cast<const char*>(&one) == 0);
}

TEST(Utf8, BuffersHaveRoomForTheWorstCase) {
    for (const uint32_t size : {0U, 18U, 19U, 0x80000000U, 0xFFFFFFFFU}) {
        std::string buffer(24, '#');
        const bool fits = size == 19;
        EXPECT_EQ(orumcomn_unicode_to_utf8(L"x\xE4y", buffer.data(), &size),
                  fits ? ORU_SUCCESS : ORU_FAILURE);
        EXPECT_EQ(buffer.substr(0, 6), fits ? std::string("x\xC3\xA4y\0#", 6) : "######") << size;
    }
    for (const uint32_t size : {0U, 4U, 5U, 0xFFFFFFFFU}) {
        std::wstring buffer(8, L'#');
        const bool fits = size > 4;
        EXPECT_EQ(orumcomn_utf8_to_unicode("x\xC3\xA4y", buffer.data(), &size),
                  fits ? ORU_SUCCESS : ORU_FAILURE);
        EXPECT_EQ(buffer.substr(0, 5), fits ? std::wstring(L"x\xE4y\0#", 5) : L"#####") << size;
    }
}

}  // namespace
