// The property-list reader. An input whose first byte is "<" or not ASCII is read as a document, and what
// must hold for any document is checked. Any other input directs the making of a property list, whose
// strings a plain model knows.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <map>
#include <string>

#include "platform/platform.h"

namespace {

using velora_com::qel::platform::max_property_string;
using velora_com::qel::platform::property_list_strings;

constexpr std::string_view keys[] = {"A", "B", "AB", ""};
const std::vector<std::string_view> asked(std::begin(keys), std::end(keys));

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

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
std::string written(char c, int way) {
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

void read_made(FuzzedDataProvider& data) {
    std::map<std::string, std::optional<std::string>> model;
    std::string items;
    while (data.remaining_bytes() > 0 && items.size() < 100'000) {
        const auto key = std::string(data.PickValueInArray(keys));
        items += "<key>" + key + "</key>";
        model[key].reset();
        switch (data.ConsumeIntegralInRange(0, 3)) {
            case 0: {
                const std::string text = data.ConsumeRandomLengthString(40);
                const size_t times = data.ConsumeIntegralInRange<size_t>(1, 20);
                std::string plain;
                std::string marked;
                for (const char byte : text) {
                    const char c = static_cast<char>(' ' + static_cast<unsigned char>(byte) % 95);
                    plain += c;
                    marked += written(c, data.ConsumeIntegralInRange(0, 3));
                }
                std::string whole;
                items += "<string>";
                for (size_t i = 0; i < times; ++i) {
                    whole += plain;
                    items += marked;
                }
                items += "</string>";
                if (whole.size() <= max_property_string) {
                    model[key] = whole;
                }
                break;
            }
            case 1:
                items += data.ConsumeBool() ? "<true/>" : "<integer>7</integer>\n";
                break;
            case 2:
                items += "<dict><key>A</key><string>inner</string></dict>";
                break;
            default: {
                const size_t depth = data.ConsumeIntegralInRange<size_t>(1, 300);
                std::string close;
                for (size_t i = 0; i < depth; ++i) {
                    items += "<array>";
                    close += "</array>";
                }
                items += close;
            }
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
        FuzzedDataProvider data(bytes, size);
        read_made(data);
    }
    return 0;
}
