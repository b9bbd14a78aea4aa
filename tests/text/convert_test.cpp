#include <gtest/gtest.h>

#include <clocale>

#include "vlrcomn/convert.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

TEST(NumberText, ByRadixAndBack) {
    char text[24];
    EXPECT_STREQ(oruItoa(INT32_MIN, text, 10), "-2147483648");
    EXPECT_STREQ(oruItot(-1, text, 16), "ffffffff");
    EXPECT_STREQ(oruI64toa(INT64_MIN, text, 10), "-9223372036854775808");
    EXPECT_STREQ(oruI64tot(INT64_MIN, text, 8), "1000000000000000000000");
    EXPECT_STREQ(oruUltot(UINT32_MAX, text, 10), "-1") << "as a signed number";
    EXPECT_EQ(oruI64toa(255, text, 2), nullptr);
    EXPECT_STREQ(text, "-1");
    EXPECT_EQ(oruAtoi64("-1"), -29) << "every byte counts as a digit";
    EXPECT_EQ(oruAtoi64("\xFF"), -49) << "a byte is signed on every host";
    EXPECT_EQ(oruTtoi64("18446744073709551617"), 1);
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
    wchar_t wide[16] = L"######";
    EXPECT_EQ(oruStandardAtoU("hello", 3, wide), 3U);
    EXPECT_STREQ(wide, L"hel###") << "cut without a terminator";
    EXPECT_EQ(oruStandardAtoU("ab\xE2\x82", 16, wide), 0U);
    EXPECT_EQ(oruStandardAtoU("\xE2\x82\xAC", 16, wide), 1U) << "the fault does not carry over";
    std::setlocale(LC_CTYPE, "C");
}

// fuzz/text holds every conversion against iconv, on hosts that have fuzzers.
TEST(Utf8, StopsBeforeTheFirstFault) {
    EXPECT_EQ(orumcomn_wide_to_ansi(L"\x80\u20AC\xFFFF"), "\xC2\x80\xE2\x82\xAC\xEF\xBF\xBF");
    EXPECT_EQ(orumcomn_wide_to_ansi(L"A\xD800Z"), "A");
    EXPECT_EQ(orumcomn_wide_to_ansi(L"A\x110000Z"), "A");
    for (const std::string fault :
         {"\x80", "\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE2\x82"}) {
        // Past eight letters, which are copied at once.
        EXPECT_EQ(orumcomn_ansi_to_wide("ABCDEFGHI\xC3\xA4" + fault + "Z"), L"ABCDEFGHI\xE4");
    }
    EXPECT_EQ(isBigEndian(), __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__);
}

TEST(Utf8, BuffersHaveRoomForTheWorstCase) {
    char buffer[] = "######";
    for (const uint32_t size : {0U, 18U, 0x80000000U}) {
        EXPECT_EQ(orumcomn_unicode_to_utf8(L"x\xE4y", buffer, &size), ORU_FAILURE);
    }
    EXPECT_STREQ(buffer, "######");
    const uint32_t size = 19;
    EXPECT_EQ(orumcomn_unicode_to_utf8(L"x\xE4y", buffer, &size), ORU_SUCCESS);
    EXPECT_EQ(std::string(buffer, 6), std::string("x\xC3\xA4y\0#", 6));
}

}  // namespace
