// Ways of writing, values of other kinds and nesting: see the fuzz target's model.

#include "platform/platform.h"
#include "support/test.h"

using namespace velora_com::qel::platform;

static std::string in_dictionary(const std::string& items) {
    return "<!DOCTYPE plist SYSTEM 'p.dtd'>\n<plist><dict>" + items + "</dict></plist>\n";
}

// What becomes of the key "A": its string in brackets, "missing", or "no list" for the whole document.
static std::string look_up(const std::string& document) {
    const auto strings = property_list_strings(document, {"A"});
    return !strings ? "no list" : strings->at(0) ? "[" + *strings->at(0) + "]" : "missing";
}

const std::string value = "<key>A</key><string>v</string>";

TEST(PropertyList, TextsAreUtf8OfBoundedLength) {
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    EXPECT_EQ(look_up(latin + in_dictionary("<key>A</key><string>\xE9</string>")), "[\xC3\xA9]");
    const std::string too_long = std::string(254, 'x') + "\xC3\xA9";
    EXPECT_EQ(look_up(in_dictionary("<key>A</key><string>" + too_long + "</string>")), "missing");
}

TEST(PropertyList, DocumentsThatAreNone) {
    for (const std::string& document : std::initializer_list<std::string>{
             "",
             "<dict>" + value + "</dict>",
             "<plist><array><dict>" + value + "</dict></array></plist>",
             "<plist><dict>" + value + "</dict><dict/></plist>",
             "<plist>x<dict>" + value + "</dict></plist>",
             in_dictionary("<string>v</string>"),
             in_dictionary(value + "<key>B</key>"),
             in_dictionary("<key>B</key>" + value),
             in_dictionary(value + "<key>B</key><set/>"),
             in_dictionary("<key>A</key><string>v<true/></string>"),
             "<!DOCTYPE plist [<!ENTITY b 'c'>]><plist><dict>" + value + "</dict></plist>",
             in_dictionary("<key>A</key><string>&b;</string>"),
         }) {
        EXPECT_EQ(look_up(document), "no list") << document;
    }
}

// A long text fits the budget of memory; what makes the parser keep far more than the document does not.
TEST(PropertyList, LargeDocumentsTakeAFewTimesTheirSize) {
    const std::string text(size_t{10} << 20, 'x');
    EXPECT_EQ(look_up(in_dictionary("<key>B</key><string>" + text + "</string>" + value)), "[v]");
    std::string open, close, attributes;
    for (size_t i = 0; i < 500'000; ++i) {
        open += "<array>";
        close += "</array>";
        attributes += " a" + std::to_string(i) + "=''";
    }
    EXPECT_EQ(look_up(in_dictionary("<key>B</key>" + open + close + value)), "no list");
    EXPECT_EQ(look_up("<plist" + attributes + "><dict>" + value + "</dict></plist>"), "no list");
}
