#include <gmock/gmock.h>
#include <sys/resource.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {
namespace {

using namespace std::string_literals;

#if defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

std::string in_dictionary(const std::string& items) {
    return "<?xml version='1.0' encoding='UTF-8'?>\n<!DOCTYPE plist PUBLIC '-//E//DTD//EN' "
           "'http://example.org/plist.dtd'>\n<plist version='1.0'>\n<dict>\n" +
           items + "</dict>\n</plist>\n";
}

std::string repeated(const std::string& piece, size_t times) {
    std::string all;
    for (size_t i = 0; i < times; ++i) {
        all += piece;
    }
    return all;
}

std::string in_utf16(const std::string& text, bool big_endian) {
    std::string wide = big_endian ? "\xFE\xFF"s : "\xFF\xFE"s;
    for (const char c : text) {
        wide += big_endian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return wide;
}

// What becomes of the key "A": its string in brackets, "missing", or "no list" for the whole document.
std::string look_up(const std::string& document) {
    const auto strings = property_list_strings(document, {"A"});
    if (!strings) {
        return "no list";
    }
    return strings->at(0) ? "[" + *strings->at(0) + "]" : "missing";
}

const std::string value = "<key>A</key><string>v</string>";
const std::string bare = "<plist><dict>" + value + "</dict></plist>";

// Ways of writing, values of other kinds and nesting: see the fuzz target's model.
TEST(PropertyList, StringsOfTheTopLevel) {
    const std::pair<std::string, std::string> cases[] = {
        {in_dictionary("<key>A</key><string/>"), "[]"},
        {in_dictionary("<key>A</key><string> a\n b </string>"), "[ a\n b ]"},
        {"\xEF\xBB\xBF" + bare, "[v]"},
        {in_utf16(bare, false), "[v]"},
        {in_utf16(bare, true), "[v]"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><plist><dict><key>A</key><string>\xE9</string>"
         "</dict></plist>",
         "[\xC3\xA9]"},
        {in_dictionary("<key>A</key><string>" + repeated("\xC3\xA9", 128) + "</string>"),
         "missing"},
        {in_dictionary("<key>" + std::string(5000, 'A') + "</key><string>v</string>"), "missing"},
    };
    for (const auto& [document, expected] : cases) {
        EXPECT_EQ(look_up(document), expected) << document.substr(0, 300);
    }
}

TEST(PropertyList, DocumentsThatAreNone) {
    for (const std::string& document : {
             ""s,
             "bplist00\xD1\x01\x02QAQv"s,
             in_dictionary("<key>A</key><string>a\0b</string>"s),
             in_dictionary("<key>A</key><string>\xC3(</string>"),
             "<?xml version='1.0' encoding='EBCDIC-9'?>" + bare,
             bare + "<more/>",
             "<dict>" + value + "</dict>",
             "<plist><array><dict>" + value + "</dict></array></plist>",
             "<plist><dict>" + value + "</dict><dict/></plist>",
             "<plist>x<dict>" + value + "</dict></plist>",
             in_dictionary("<string>v</string>"),
             in_dictionary(value + "<key>B</key>"),
             in_dictionary("<key>B</key>" + value),
             in_dictionary(value + "<key>B</key><set/>"),
             in_dictionary("<key>A</key><string>v<true/></string>"),
             in_dictionary("<key>A<true/></key><string>v</string>"),
             "<!DOCTYPE plist [<!ENTITY b SYSTEM 'file:///etc/hostname'>]>" + bare,
         }) {
        EXPECT_EQ(look_up(document), "no list") << document;
    }
}

// What unfolds or grows in other readers: the answer comes, and from a few times the document's memory.
TEST(PropertyList, LargeDocumentsTakeAFewTimesTheirSize) {
    constexpr size_t size = size_t{10} << 20;
    std::string attributes;
    for (size_t i = 0; attributes.size() < size; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
    }
    std::string entities = "<!ENTITY a0 'xxxxxxxxxx'>";
    for (int i = 1; i < 12; ++i) {
        entities += "<!ENTITY a" + std::to_string(i) + " '" +
                    repeated("&a" + std::to_string(i - 1) + ";", 10) + "'>";
    }
    const std::pair<std::string, std::string> cases[] = {
        {in_dictionary("<key>B</key><string>" + std::string(size, 'x') + "</string>" + value),
         "[v]"},
        {in_dictionary("<!--" + std::string(size, 'x') + "-->" + value), "[v]"},
        {in_dictionary(repeated("<key>B</key><string>v</string>", size / 30) + value), "[v]"},
        {"<plist><dict><key>A</key>" + repeated("<array>", size / 7), "no list"},
        {"<plist" + attributes + "><dict>" + value + "</dict></plist>", "no list"},
        {"<!DOCTYPE plist [" + entities +
             "]><plist><dict><key>A</key><string>&a11;</string></dict>"
             "</plist>",
         "no list"},
    };
    constexpr long multiple = sanitized ? 50 : 5;  // a sanitizer keeps freed memory for a while
    rusage before = {};
    getrusage(RUSAGE_SELF, &before);
    for (const auto& [document, expected] : cases) {
        SCOPED_TRACE(document.substr(0, 300));
        EXPECT_EQ(look_up(document), expected);
        rusage after = {};
        getrusage(RUSAGE_SELF, &after);
        EXPECT_LT(after.ru_maxrss - before.ru_maxrss, multiple * static_cast<long>(size >> 10));
    }
}

}  // namespace
}  // namespace velora_com::qel::platform
