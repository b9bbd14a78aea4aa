#include <clocale>

#include "support/test.h"
#include "vlrcomn/convert.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

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
    EXPECT_STREQ(oruUltot(UINT32_MAX, text, 16), "ffffffff");
    EXPECT_STREQ(oruItoa(-1, text, 8), "37777777777");
    EXPECT_TRUE(oruItoa(1, nullptr, 10) == nullptr && oruAtoi64(nullptr) == 0);
    constexpr long lowest = std::numeric_limits<long>::min();
    EXPECT_EQ(orumcomn_long_to_ansi_string(lowest), std::to_string(lowest));
    EXPECT_EQ(orumcomn_long_to_wide_string(-1234567), L"-1234567");
}

TEST(Tokenizer, PartsATextInPlaceByChangingDelimiters) {
    char text[] = ":;a:b;;c";
    char* save = nullptr;
    EXPECT_STREQ(oruTstrtok_r(text, ";:", &save), "a");
    EXPECT_STREQ(oruTstrtok_r(nullptr, ";", &save), "b");
    EXPECT_STREQ(oruTstrtok_r(nullptr, ";:", &save), "c");
    EXPECT_EQ(oruTstrtok_r(nullptr, ";:", &save), nullptr);
}

TEST(LocaleText, TheLocaleDecidesTheEncoding) {
    char narrow[16] = {};
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), 0U);
    EXPECT_EQ(oruStandardUtoA(nullptr, sizeof narrow, narrow), 0U);
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

// fuzz/text holds every conversion against iconv.
TEST(Utf8, StopsBeforeTheFirstFault) {
    // The ends of every length, with and behind eight letters, which are copied at once.
    const std::wstring wide = L"ABCDEFGH\x7F\x80\x7FF\x800\xD7FF\xE000\xFFFF\x10000\x10FFFF";
    const std::string narrow =
        "ABCDEFGH\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80"
        "\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    EXPECT_EQ(orumcomn::wide_to_ansi(wide), narrow);
    EXPECT_EQ(orumcomn::ansi_to_wide(narrow), wide);
    for (const wchar_t fault : {0xD800, 0xDFFF, 0x110000}) {
        EXPECT_EQ(orumcomn_wide_to_ansi(wide + fault + L"Z"), narrow) << std::hex << +fault;
    }
    for (const std::string fault :
         {"\x80", "\xC1\xBF", "\xC3\x41", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xE2\x82", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"}) {
        EXPECT_EQ(orumcomn_ansi_to_wide(narrow + fault + "Z"), wide);
        EXPECT_EQ(orumcomn_ansi_to_wide(fault), L"") << "also at the end";
    }
    EXPECT_EQ(isBigEndian(), __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__);
}

template <typename Convert, typename From, typename To>
static void expect_room(Convert convert, const From* from, const std::basic_string<To>& expected,
                        std::initializer_list<uint32_t> too_little, uint32_t enough) {
    std::basic_string<To> buffer(6, '#');
    for (const uint32_t size : too_little) {
        EXPECT_EQ(convert(from, buffer.data(), &size), ORU_FAILURE) << size;
    }
    EXPECT_EQ(convert(nullptr, buffer.data(), &enough), ORU_FAILURE);
    EXPECT_EQ(convert(from, nullptr, &enough), ORU_FAILURE);
    EXPECT_EQ(convert(from, buffer.data(), nullptr), ORU_FAILURE);
    EXPECT_EQ(buffer, std::basic_string<To>(6, '#'));
    EXPECT_EQ(convert(from, buffer.data(), &enough), ORU_SUCCESS);
    EXPECT_EQ(buffer, expected);
}

TEST(Utf8, BuffersHaveRoomForTheWorstCase) {  // also where bytes count and not characters
    expect_room(orumcomn_unicode_to_utf8, L"x\xE4y", std::string("x\xC3\xA4y\0#", 6),
                {0U, 18U, 0x80000000U}, 19);
    expect_room(orumcomn_utf8_to_unicode, "x\xC3\xA4y", std::wstring(L"x\xE4y\0##", 6), {4U}, 5);
}
