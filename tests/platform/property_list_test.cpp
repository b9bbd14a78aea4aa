#include <gmock/gmock.h>
#include <sys/resource.h>

#include <sstream>

#include "platform/platform.h"

namespace velora_com::qel::platform {
namespace {

using namespace std::string_literals;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Example//DTD PLIST 1.0//EN\" \"http://example.org/plist.dtd\">\n";

std::string in_dictionary(const std::string& items) {
    return head + "<plist version=\"1.0\">\n<dict>\n" + items + "</dict>\n</plist>\n";
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
    EXPECT_EQ(strings->size(), 1U);
    return strings->front() ? "[" + *strings->front() + "]" : "missing";
}

struct Case {
    std::string description;
    std::string document;
    std::string expected;
};

class PropertyList : public testing::TestWithParam<Case> {};

TEST_P(PropertyList, AnswersForOneKey) {
    EXPECT_EQ(look_up(GetParam().document), GetParam().expected);
}

const std::string value = "<key>A</key><string>v</string>";

const Case strings[] = {
    {"plain", in_dictionary(value), "[v]"},
    {"without prologue", "<plist><dict>" + value + "</dict></plist>", "[v]"},
    {"empty string", in_dictionary("<key>A</key><string></string>"), "[]"},
    {"empty element", in_dictionary("<key>A</key><string/>"), "[]"},
    {"blanks kept", in_dictionary("<key>A</key><string> a\n b </string>"), "[ a\n b ]"},
    {"comments, sections and character references",
     in_dictionary(
         "<!-- x --><key>A</key><!-- y --><string>a<!-- z -->&lt;&#65;<![CDATA[<b>]]></string>"),
     "[a<A<b>]"},
    {"key in pieces", in_dictionary("<key>&#65;</key><string>v</string>"), "[v]"},
    {"UTF-8", in_dictionary("<key>A</key><string>\xC3\xA9\xF0\x9F\x8D\x8E</string>"),
     "[\xC3\xA9\xF0\x9F\x8D\x8E]"},
    {"UTF-8 with a mark", "\xEF\xBB\xBF<plist><dict>" + value + "</dict></plist>", "[v]"},
    {"UTF-16, little-endian", in_utf16("<plist><dict>" + value + "</dict></plist>", false), "[v]"},
    {"UTF-16, big-endian", in_utf16("<plist><dict>" + value + "</dict></plist>", true), "[v]"},
    {"Latin-1",
     "<?xml version='1.0' encoding='ISO-8859-1'?><plist><dict><key>A</key>"
     "<string>\xE9</string></dict></plist>",
     "[\xC3\xA9]"},
    {"last of equal keys", in_dictionary("<key>A</key><string>u</string>" + value), "[v]"},
    {"last of equal keys, no string", in_dictionary(value + "<key>A</key><true/>"), "missing"},
    {"the longest string",
     in_dictionary("<key>A</key><string>" + std::string(255, 'x') + "</string>"),
     "[" + std::string(255, 'x') + "]"},
    {"one byte too long",
     in_dictionary("<key>A</key><string>" + std::string(256, 'x') + "</string>"), "missing"},
    {"too long, counted in bytes",
     in_dictionary("<key>A</key><string>" + repeated("\xC3\xA9", 128) + "</string>"), "missing"},
    {"empty dictionary", in_dictionary(""), "missing"},
    {"no such key", in_dictionary("<key>B</key><string>v</string>"), "missing"},
    {"key that begins alike", in_dictionary("<key>AA</key><string>v</string>"), "missing"},
    {"key that is long",
     in_dictionary("<key>" + std::string(5000, 'A') + "</key><string>v</string>"), "missing"},
    {"number", in_dictionary("<key>A</key><integer>10</integer>"), "missing"},
    {"key of a nested dictionary",
     in_dictionary("<key>B</key><dict>" + value + "</dict><key>C</key><array><dict>" + value +
                   "</dict></array>"),
     "missing"},
    {"behind nested ones of the same name",
     in_dictionary("<key>B</key><dict><key>A</key><string>n</string></dict>" + value), "[v]"},
    {"deep nesting",
     in_dictionary("<key>B</key>" + repeated("<array>", 20000) + repeated("</array>", 20000) +
                   value),
     "[v]"},
};

const Case no_lists[] = {
    {"empty", "", "no list"},
    {"blanks", " \n ", "no list"},
    {"text", "ProductVersion = 10.4.11", "no list"},
    {"binary form", "bplist00\xD1\x01\x02QAQv"s, "no list"},
    {"noise", "\x00\xFF\x7F\x80<plist>"s, "no list"},
    {"null inside", in_dictionary("<key>A</key><string>a\0b</string>"s), "no list"},
    {"invalid UTF-8", in_dictionary("<key>A</key><string>\xC3(</string>"), "no list"},
    {"unknown encoding", "<?xml version='1.0' encoding='EBCDIC-9'?><plist><dict/></plist>",
     "no list"},
    {"truncated", in_dictionary(value).substr(0, in_dictionary(value).size() - 10), "no list"},
    {"something behind the end", in_dictionary(value) + "<more/>", "no list"},
    {"mismatched elements", in_dictionary("<key>A</key><string>v</key>"), "no list"},
    {"other root", "<html><dict>" + value + "</dict></html>", "no list"},
    {"dictionary as root", "<dict>" + value + "</dict>", "no list"},
    {"array on top", "<plist><array><dict>" + value + "</dict></array></plist>", "no list"},
    {"nothing on top", "<plist></plist>", "no list"},
    {"two dictionaries", "<plist><dict>" + value + "</dict><dict/></plist>", "no list"},
    {"text beside the dictionary", "<plist>x<dict>" + value + "</dict></plist>", "no list"},
    {"text between items", in_dictionary(value + "x"), "no list"},
    {"value without key", in_dictionary("<string>v</string>"), "no list"},
    {"key without value", in_dictionary(value + "<key>B</key>"), "no list"},
    {"key behind key", in_dictionary("<key>B</key>" + value), "no list"},
    {"unknown element", in_dictionary(value + "<key>B</key><set/>"), "no list"},
    {"element inside a string", in_dictionary("<key>A</key><string>v<true/></string>"), "no list"},
    {"element inside a key", in_dictionary("<key>A<true/></key><string>v</string>"), "no list"},
    {"unknown entity", in_dictionary("<key>A</key><string>a&b;c</string>"), "no list"},
    {"entity of its own",
     "<!DOCTYPE plist [<!ENTITY b 'x'>]><plist><dict><key>A</key>"
     "<string>&b;</string></dict></plist>",
     "no list"},
    {"entity of a file",
     "<!DOCTYPE plist [<!ENTITY b SYSTEM 'file:///etc/hostname'>]><plist><dict>"
     "<key>A</key><string>&b;</string></dict></plist>",
     "no list"},
};

std::string name_of(const testing::TestParamInfo<Case>& info) {
    std::string name;
    for (const char c : info.param.description) {
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Strings, PropertyList, testing::ValuesIn(strings), name_of);
INSTANTIATE_TEST_SUITE_P(NoLists, PropertyList, testing::ValuesIn(no_lists), name_of);

TEST(PropertyListKeys, EachKeyHasItsAnswer) {
    const std::string document =
        in_dictionary("<key>B</key><string>2</string><key></key><string>e</string>" + value);
    const std::string long_key(300, 'k');
    EXPECT_THAT(property_list_strings(document, {"A", "B", "A", "C", ""}),
                testing::Optional(testing::ElementsAre("v", "2", "v", std::nullopt, "e")));
    EXPECT_THAT(property_list_strings(document, {}), testing::Optional(testing::IsEmpty()));
    EXPECT_THAT(property_list_strings(
                    in_dictionary("<key>" + long_key + "</key><string>w</string>"), {long_key}),
                testing::Optional(testing::ElementsAre("w")));
}

// What unfolds or grows in other readers: the answer comes, and from a few times the document's memory.
TEST(PropertyListSize, LargeDocumentsTakeAFewTimesTheirSize) {
    constexpr size_t size = size_t{10} << 20;
    std::string entities = "<!DOCTYPE plist [<!ENTITY a0 'xxxxxxxxxx'>";
    for (int i = 1; i < 12; ++i) {
        std::ostringstream line;
        line << "<!ENTITY a" << i << " '" << repeated("&a" + std::to_string(i - 1) + ";", 10)
             << "'>";
        entities += line.str();
    }
    entities += "]><plist><dict><key>A</key><string>&a11;</string></dict></plist>";
    const Case cases[] = {
        {"long string",
         in_dictionary("<key>B</key><string>" + std::string(size, 'x') + "</string>" + value),
         "[v]"},
        {"long comment", in_dictionary("<!--" + std::string(size, 'x') + "-->" + value), "[v]"},
        {"many keys", in_dictionary(repeated("<key>B</key><string>v</string>", size / 30) + value),
         "[v]"},
        {"endless nesting", head + "<plist><dict><key>A</key>" + repeated("<array>", size / 7),
         "no list"},
        {"many attributes",
         [] {
             std::string many = "<plist";
             for (size_t i = 0; many.size() < size; ++i) {
                 many += " a" + std::to_string(i) + "=''";
             }
             return many + "><dict>" + value + "</dict></plist>";
         }(),
         "no list"},
        {"unfolding entities", entities, "no list"},
    };
    constexpr long multiple = sanitized ? 50 : 5;  // a sanitizer keeps freed memory for a while
    rusage before = {};
    getrusage(RUSAGE_SELF, &before);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.description);
        EXPECT_EQ(look_up(c.document), c.expected);
        rusage after = {};
        getrusage(RUSAGE_SELF, &after);
        EXPECT_LT(after.ru_maxrss - before.ru_maxrss, multiple * static_cast<long>(size >> 10));
    }
}

}  // namespace
}  // namespace velora_com::qel::platform
