// Wide text and UTF-8 on literal bytes; fuzz/text holds every conversion against iconv.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

// Nine letters before the code, so that blocks of eight are copied too.
std::wstring wide(uint32_t code) {
    return L"ABCDEFGHI" + std::wstring(1, static_cast<wchar_t>(code)) + L"Z";
}

TEST(Utf8, CodesAndTheirBytes) {
    const std::wstring codes{0x7F,   0x80,   0x7FF,  0x800,   0xD7FF,
                             0xE000, 0xFEFF, 0xFFFF, 0x10000, 0x10FFFF};
    const std::string bytes =
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF"
        "\xEE\x80\x80\xEF\xBB\xBF\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    EXPECT_EQ(orumcomn::wide_to_ansi(codes), bytes);
    EXPECT_EQ(orumcomn::ansi_to_wide(bytes), codes);
    EXPECT_EQ(orumcomn_wide_to_ansi(std::wstring(L"ab\0cd", 5)), "ab") << "the first zero ends it";
    EXPECT_EQ(orumcomn_ansi_to_wide(std::string("ab\0cd", 5)), L"ab");
    const uint16_t one = 1;
    EXPECT_EQ(isBigEndian(), *reinterpret_cast<const char*>(&one) == 0);
}

TEST(Utf8, StopsBeforeTheFirstFault) {
    for (const uint32_t code : {0xD800U, 0xDFFFU, 0x110000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(orumcomn_wide_to_ansi(wide(code)), "ABCDEFGHI") << code;
    }
    std::istringstream faults(
        "\x80 \xBF "  // no beginning
        "\xC0\x80 \xC1\xBF \xE0\x80\x80 \xE0\x9F\xBF \xF0\x80\x80\x80 \xF0\x8F\xBF\xBF "  // overlong
        "\xED\xA0\x80 \xED\xBF\xBF "                                                   // surrogates
        "\xF4\x90\x80\x80 \xF5\x80\x80\x80 \xF8\x88\x80\x80\x80 \xFF "                 // too large
        "\xC2 \xE2\x82 \xF0\x9F\x98 \xC2\x41 \xE2\x41\x82 \xE2\x82\x41 \xE2\x82\xC2 "  // too short
        "\xF0\x41\x98\x80 \xF0\x9F\x41\x80 \xF0\x9F\x98\x41");
    for (std::string fault; faults >> fault;) {
        SCOPED_TRACE(testing::PrintToString(fault));
        EXPECT_EQ(orumcomn_ansi_to_wide("A" + fault), L"A");
        EXPECT_EQ(orumcomn_ansi_to_wide("ABCDEFGHI" + fault + "Z"), L"ABCDEFGHI");
    }
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
    char narrow[8];
    wchar_t wide_text[8];
    const uint32_t size = 8;
    EXPECT_EQ(orumcomn_unicode_to_utf8(nullptr, narrow, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_unicode_to_utf8(L"", nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_utf8_to_unicode(nullptr, wide_text, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_utf8_to_unicode("", wide_text, nullptr), ORU_FAILURE);
}

}  // namespace
