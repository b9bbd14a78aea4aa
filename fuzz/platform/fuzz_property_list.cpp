// The property-list reader. An input whose first byte is "<" or not ASCII is read as a document, and what
// must hold for any document is checked. Any other input directs the making of a property list, whose
// strings a plain model knows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace {

using velora_com::qel::platform::max_property_string;
using velora_com::qel::platform::property_list_strings;

constexpr std::string_view keys[] = {"A", "B", "AB", ""};
// NOLINTNEXTLINE(cert-err58-cpp): a program without memory for these has nothing to test
const std::vector<std::string_view> asked(std::begin(keys), std::end(keys));

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// The input as a row of choices; what it does not say any more is 0.
class Choices {
public:
    Choices(const uint8_t* bytes, size_t size) : next_(bytes), end_(bytes + size) {}
    bool left() const { return next_ != end_; }
    size_t byte() { return left() ? *next_++ : 0; }
    size_t below(size_t bound) {
        size_t value = byte();
        if (bound > 256) {
            value = value * 256 + byte();
        }
        return value % bound;
    }

private:
    const uint8_t* next_;
    const uint8_t* end_;
};

void read_any(const std::string& document) {
    const auto strings = property_list_strings(document, asked);
    if (!strings) {
        return;
    }
    require(strings->size() == asked.size());
    for (size_t i = 0; i < asked.size(); ++i) {
        require(!(*strings)[i] || (*strings)[i]->size() <= max_property_string);
        // Asked alone, a key gets the same answer.
        require(property_list_strings(document, {asked[i]}) == std::vector{(*strings)[i]});
    }
    // A property list ends where it ends: one byte fewer is none, unless blanks or a comment follow.
    if (document.back() == '>' && document.compare(document.size() - 2, 2, "t>") == 0) {
        require(!property_list_strings(document.substr(0, document.size() - 1), asked));
    }
}

// One character of text in one of the ways to write it.
std::string written(char c, size_t way) {
    if (way == 1) {
        return "&#" + std::to_string(static_cast<int>(c)) + ";";
    }
    if (way == 2) {
        return std::string("<![CDATA[") + c + "]]>";
    }
    const std::string gap = way == 3 ? "<!--A-->" : "";
    switch (c) {
        case '<':
            return gap + "&lt;";
        case '>':
            return gap + "&gt;";
        case '&':
            return gap + "&amp;";
        default:
            return gap + c;
    }
}

// A string of printable characters, each written in some way, and all of that some times over.
void append_string(Choices& choices, std::string& items, std::optional<std::string>& value) {
    std::string plain;
    std::string marked;
    for (size_t length = choices.below(40); length > 0; --length) {
        const char c = static_cast<char>(' ' + choices.below(95));
        plain += c;
        marked += written(c, choices.below(4));
    }
    std::string whole;
    items += "<string>";
    for (size_t times = 1 + choices.below(20); times > 0; --times) {
        whole += plain;
        items += marked;
    }
    items += "</string>";
    if (whole.size() <= max_property_string) {
        value = whole;
    }
}

void append_arrays(size_t depth, std::string& items) {
    std::string close;
    for (size_t i = 0; i < depth; ++i) {
        items += "<array>";
        close += "</array>";
    }
    items += close;
}

void read_made(Choices choices) {
    std::map<std::string, std::optional<std::string>> model;
    std::string items;
    while (choices.left() && items.size() < 100'000) {
        const std::string key(keys[choices.below(std::size(keys))]);
        items += "<key>" + key + "</key>";
        model[key].reset();
        switch (choices.below(4)) {
            case 0:
                append_string(choices, items, model[key]);
                break;
            case 1:
                items += choices.below(2) == 1 ? "<true/>" : "<integer>7</integer>\n";
                break;
            case 2:
                items += "<dict><key>A</key><string>inner</string></dict>";
                break;
            default:
                append_arrays(1 + choices.below(300), items);
        }
    }
    const auto strings =
        property_list_strings("<plist version='1.0'><dict>" + items + "</dict></plist>", asked);
    require(strings && strings->size() == asked.size());
    for (size_t i = 0; i < asked.size(); ++i) {
        require((*strings)[i] == model[std::string(asked[i])]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    if (size > 0 && (bytes[0] == '<' || bytes[0] >= 0x80)) {
        read_any({reinterpret_cast<const char*>(bytes), size});
    } else {
        read_made({bytes, size});
    }
    return 0;
}
