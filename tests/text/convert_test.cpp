// Numbers and text, text in the locale's encoding, the tokenizer.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstring>
#include <string>

#include "vlrcomn/convert.h"

namespace {

TEST(NumberText, ByRadix) {
    const struct {
        int64_t value;
        int radix;
        const char *in_32_bits, *in_64_bits;
    } cases[] = {
        {0, 10, "0", "0"},
        {255, 16, "ff", "ff"},
        {-5, 10, "-5", "-5"},
        {-1, 16, "ffffffff", "ffffffffffffffff"},
        {-1, 8, "37777777777", "1777777777777777777777"},
        {INT32_MIN, 10, "-2147483648", "-2147483648"},
        {INT32_MIN, 16, "80000000", "ffffffff80000000"},
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
        EXPECT_EQ(oruI64tot(value, text, radix), text);
        EXPECT_STREQ(text, in_64_bits);
    }
}

TEST(NumberText, OtherRadixesWriteNothing) {
    for (const int radix : {-10, 0, 2, 7, 36}) {
        char text[] = "kept";
        EXPECT_EQ(oruItoa(255, text, radix), nullptr);
        EXPECT_EQ(oruUltot(255, text, radix), nullptr);
        EXPECT_EQ(oruI64tot(255, text, radix), nullptr);
        EXPECT_STREQ(text, "kept");
    }
    EXPECT_EQ(oruItoa(255, nullptr, 10), nullptr);
}

TEST(NumberText, EveryByteCountsAsADigit) {
    const struct {
        const char* text;
        int64_t value;
    } cases[] = {
        {"", 0},
        {nullptr, 0},
        {"12", 12},
        {"1a", 59},
        {"-1", -29},
        {" 7", -153},
        {"\xFF", -49},  // a byte is signed on every host
        {"9223372036854775807", INT64_MAX},
        {"9223372036854775808", INT64_MIN},
        {"18446744073709551617", 1},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(oruAtoi64(text), value) << (text != nullptr ? text : "null");
        EXPECT_EQ(oruTtoi64(text), value);
    }
}

class LocaleText : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (std::setlocale(LC_CTYPE, GetParam()) == nullptr) {
            GTEST_SKIP() << "no locale " << GetParam();
        }
    }
    void TearDown() override { std::setlocale(LC_CTYPE, "C"); }
};
INSTANTIATE_TEST_SUITE_P(Locales, LocaleText, testing::Values("C", "C.UTF-8"),
                         [](const auto& locale) { return locale.index == 0 ? "C" : "Utf8"; });

TEST_P(LocaleText, LimitsAreThoseOfTheDestination) {
    for (const size_t limit : {size_t{0}, size_t{3}, size_t{5}, size_t{6}, size_t{9}}) {
        SCOPED_TRACE(limit);
        const size_t written = std::min(limit, size_t{5});
        const size_t kept_from = limit > 5 ? 6 : limit;
        char narrow[] = "##########";
        EXPECT_EQ(oruStandardUtoA(L"hello", limit, narrow), written);
        EXPECT_EQ(std::string(narrow, 10),
                  std::string("hello\0####", kept_from) + std::string(10 - kept_from, '#'));
        wchar_t wide[] = L"##########";
        EXPECT_EQ(oruStandardAtoU("hello", limit, wide), written);
        EXPECT_EQ(std::wstring(wide, 10),
                  std::wstring(L"hello\0####", kept_from) + std::wstring(10 - kept_from, L'#'));
    }
    EXPECT_EQ(oruStandardUtoA(L"hello", 0, nullptr), 5U);
    EXPECT_EQ(oruStandardAtoU("hello", 0, nullptr), 5U);
}

TEST_P(LocaleText, TheLocaleDecidesTheEncoding) {
    const bool utf8 = GetParam() != std::string("C");
    char narrow[16] = {};
    EXPECT_EQ(oruStandardUtoA(L"\u20AC", sizeof narrow, narrow), utf8 ? 3U : 0U);
    if (utf8) {
        EXPECT_STREQ(narrow, "\xE2\x82\xAC");
        EXPECT_EQ(oruStandardUtoA(L"\u20AC", 2, narrow), 0U) << "no character is torn";
        wchar_t wide[16];
        EXPECT_EQ(oruStandardAtoU("ab\xE2\x82", 16, wide), 0U);
        // The state of a fault does not carry over into the next call.
        EXPECT_EQ(oruStandardAtoU("\xE2\x82\xAC", 16, wide), 1U);
        EXPECT_STREQ(wide, L"\u20AC");
    }
    EXPECT_EQ(oruStandardUtoA(nullptr, sizeof narrow, narrow), 0U);
    EXPECT_EQ(oruStandardAtoU(nullptr, 1, nullptr), 0U);
}

TEST(Tokenizer, TakesTokensApart) {
    char text[] = ";;a;bc:d";
    char* save = nullptr;
    EXPECT_STREQ(oruTstrtok_r(text, ";", &save), "a");
    EXPECT_STREQ(oruTstrtok_r(nullptr, ";:", &save), "bc");
    EXPECT_STREQ(oruTstrtok_r(nullptr, ";:", &save), "d");
    EXPECT_EQ(oruTstrtok_r(nullptr, ";:", &save), nullptr);
}

}  // namespace
