// Wide text and UTF-8: literal results, sizes, faults, and agreement with iconv.
#include <gtest/gtest.h>

#include <cwchar>
#include <string>
#include <vector>

#include "text/iconv_model.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

// U+0041 and one code, so that a fault leaves the "A".
std::wstring wide(uint32_t code) {
    return {L'A', static_cast<wchar_t>(code), L'Z'};
}

std::string printable(const std::string& bytes) {
    return testing::PrintToString(bytes);
}

TEST(Utf8, CodesAndTheirBytes) {
    const struct {
        uint32_t code;
        std::string bytes;
    } cases[] = {{0x7F, "\x7F"},
                 {0x80, "\xC2\x80"},
                 {0x7FF, "\xDF\xBF"},
                 {0xD7FF, "\xED\x9F\xBF"},
                 {0xFEFF, "\xEF\xBB\xBF"},
                 {0x10000, "\xF0\x90\x80\x80"},
                 {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
    for (const auto& [code, bytes] : cases) {
        SCOPED_TRACE(code);
        EXPECT_EQ(orumcomn::wide_to_ansi(wide(code)), "A" + bytes + "Z");
        EXPECT_EQ(orumcomn::ansi_to_wide("A" + bytes + "Z"), wide(code));
    }
}

TEST(Utf8, StopsBeforeTheFirstFault) {
    for (const uint32_t code : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(orumcomn_wide_to_ansi(wide(code)), "A") << code;
    }
    // No beginning, overlong, above U+10FFFF, a surrogate, no lead byte, too short.
    for (const std::string fault :
         {"\x80", "\xC1\xBF", "\xF4\x90\x80\x80", "\xED\xA0\x80", "\xFF", "\xF0\x9F\x98"}) {
        SCOPED_TRACE(printable(fault));
        EXPECT_EQ(orumcomn_ansi_to_wide("A" + fault), L"A");
        EXPECT_EQ(orumcomn_ansi_to_wide("0123456789ABCDEF" + fault + "Z"), L"0123456789ABCDEF");
    }
}

TEST(Utf8, TextEndsAtItsFirstZero) {
    EXPECT_EQ(orumcomn_wide_to_ansi(std::wstring(L"ab\0cd", 5)), "ab");
    EXPECT_EQ(orumcomn_ansi_to_wide(std::string("ab\0cd", 5)), L"ab");
    EXPECT_EQ(orumcomn_wide_to_ansi(L""), "");
    EXPECT_EQ(orumcomn_ansi_to_wide(""), L"");
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

TEST(Utf8, NullArgumentsFail) {
    char narrow[8];
    wchar_t wide_text[8];
    const uint32_t size = 8;
    EXPECT_EQ(orumcomn_unicode_to_utf8(nullptr, narrow, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_unicode_to_utf8(L"", nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_utf8_to_unicode(nullptr, wide_text, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_utf8_to_unicode("", wide_text, nullptr), ORU_FAILURE);
}

// Other C libraries answer faults in other ways; the results here are glibc's on every host.
#if defined(__GLIBC__)

TEST(Utf8, EveryCodeConvertsAsInIconv) {
    std::vector<uint32_t> codes;
    for (uint32_t code = 1; code < 0x20000; ++code) {
        codes.push_back(code);
    }
    for (unsigned bit = 17; bit < 32; ++bit) {
        const uint32_t power = UINT32_C(1) << bit;
        codes.insert(codes.end(), {power - 1, power, power + 1});
    }
    for (const uint32_t code : codes) {
        ASSERT_EQ(orumcomn_wide_to_ansi(wide(code)), iconv_model::unicode_to_utf8(wide(code)))
            << code;
    }
}

// Every lead byte before every class of bytes that decides whether a sequence is well formed.
TEST(Utf8, EverySequenceConvertsAsInIconv) {
    const std::string second("\x41\x80\x83\x84\x87\x88\x8F\x90\x9F\xA0\xBF\xC2\xFF");
    const std::string further("\x41\x80\xBF\xC2");
    for (int lead = 0x80; lead <= 0xFF; ++lead) {
        for (const char byte : second) {
            for (unsigned pattern = 0; pattern < 256; ++pattern) {
                std::string text{'A', static_cast<char>(lead), byte};
                for (unsigned i = 0; i < 4; ++i) {
                    text += further[pattern >> 2 * i & 3];
                }
                ASSERT_EQ(orumcomn_ansi_to_wide(text), iconv_model::utf8_to_unicode(text))
                    << printable(text);
            }
        }
    }
}

#endif

}  // namespace
