// Numbers and text, text in the locale's encoding.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <string>

#include "support/skip.h"
#include "vlrcomn/convert.h"

namespace {

TEST(NumberText, ByRadix) {
    const struct {
        int64_t value;
        int radix;
        const char *in_32_bits, *in_64_bits;
    } cases[] = {
        {0, 10, "0", "0"},
        {-1, 10, "-1", "-1"},
        {-1, 16, "ffffffff", "ffffffffffffffff"},
        {INT32_MIN, 10, "-2147483648", "-2147483648"},
        {INT64_MIN, 10, "0", "-9223372036854775808"},
        {INT64_MIN, 8, "0", "1000000000000000000000"},
    };
    for (const auto& [value, radix, in_32_bits, in_64_bits] : cases) {
        SCOPED_TRACE(value);
        const int32_t low = static_cast<int32_t>(value);
        char text[24];
        EXPECT_STREQ(oruItoa(low, text, radix), in_32_bits);
        EXPECT_STREQ(oruItot(low, text, radix), in_32_bits);
        EXPECT_STREQ(oruUltot(static_cast<uint32_t>(low), text, radix), in_32_bits);
        EXPECT_STREQ(oruI64toa(value, text, radix), in_64_bits);
        EXPECT_STREQ(oruI64tot(value, text, radix), in_64_bits);
    }
    for (const int radix : {-10, 0, 2, 36}) {
        char text[] = "kept";
        EXPECT_EQ(oruUltot(255, text, radix), nullptr);
        EXPECT_EQ(oruI64toa(255, text, radix), nullptr);
        EXPECT_STREQ(text, "kept");
    }
    EXPECT_EQ(oruItoa(255, nullptr, 10), nullptr);
}

TEST(NumberText, EveryByteCountsAsADigit) {
    EXPECT_EQ(oruAtoi64(nullptr), 0);
    EXPECT_EQ(oruAtoi64("-1"), -29);
    EXPECT_EQ(oruAtoi64("\xFF"), -49) << "a byte is signed on every host";
    EXPECT_EQ(oruTtoi64("9223372036854775808"), INT64_MIN);
    EXPECT_EQ(oruTtoi64("18446744073709551617"), 1);
}

TEST(LocaleText, LimitsAreThoseOfTheDestination) {
    for (const size_t limit : {0U, 3U, 5U, 6U, 9U}) {
        SCOPED_TRACE(limit);
        const size_t written = std::min<size_t>(limit, 5);
        const size_t touched = std::min<size_t>(limit, 6);
        std::string narrow(10, '#');
        EXPECT_EQ(oruStandardUtoA(L"hello", limit, narrow.data()), written);
        EXPECT_EQ(narrow, std::string("hello\0", touched) + std::string(10 - touched, '#'));
        std::wstring wide(10, L'#');
        EXPECT_EQ(oruStandardAtoU("hello", limit, wide.data()), written);
        EXPECT_EQ(wide, std::wstring(L"hello\0", touched) + std::wstring(10 - touched, L'#'));
    }
    EXPECT_EQ(oruStandardUtoA(nullptr, 1, nullptr), 0U);
    EXPECT_EQ(oruStandardAtoU(nullptr, 1, nullptr), 0U);
}

TEST(LocaleText, TheLocaleDecidesTheEncoding) {
    char narrow[16] = {};
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), 0U);
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
        SKIP_FOR_LACK_OF("a UTF-8 locale");
    }
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), 3U);
    EXPECT_STREQ(narrow, "\xE2\x82\xAC");
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", 2, narrow), 0U) << "no character is torn";
    wchar_t wide[16];
    EXPECT_EQ(oruStandardAtoU("ab\xE2\x82", 16, wide), 0U);
    EXPECT_EQ(oruStandardAtoU("\xE2\x82\xAC", 16, wide), 1U) << "the fault does not carry over";
    EXPECT_STREQ(wide, L"\u20AC");
    std::setlocale(LC_CTYPE, "C");
}

}  // namespace
