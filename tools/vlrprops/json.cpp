#include "json.h"

#include <cstdio>

#include "text.h"
#include "values.h"

namespace vlrprops {

namespace {

// A JSON string (RFC 8259, section 7) in UTF-8.
std::string quoted(const std::wstring& text) {
    std::string string = "\"";
    for (const char byte : utf8(text)) {
        if (byte == '"' || byte == '\\') {
            string += '\\';
            string += byte;
        } else if (static_cast<unsigned char>(byte) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(byte));
            string += escape;
        } else {
            string += byte;
        }
    }
    return string + '"';
}

std::string typed_value(Kind kind, const std::wstring& value) {
    const std::optional<double> stated = number(kind, value);
    if (!stated) {
        return quoted(value);
    }
    char digits[400];  // enough for every double
    std::snprintf(digits, sizeof digits, "%.0f", *stated);
    return digits;
}

// `format` makes JSON of an entry's value.
template <typename Map, typename Format>
std::string object(const Map& map, Format format) {
    std::string json = "{";
    const char* separator = "\n";
    for (const auto& entry : map) {
        json += separator;
        json += "  " + quoted(entry.first) + ": " + format(entry);
        separator = ",\n";
    }
    return json + (map.empty() ? "}\n" : "\n}\n");
}

}  // namespace

std::string to_json(const Properties& properties, bool typed) {
    return object(properties, [typed](const Properties::value_type& entry) -> std::string {
        const Property* const property = typed ? find_property(utf8(entry.first)) : nullptr;
        if (property == nullptr) {
            return quoted(entry.second);
        }
        return is_absent(*property, entry.second) ? "null"
                                                  : typed_value(property->kind, entry.second);
    });
}

std::string to_json(const FileSystems& file_systems, bool typed) {
    const Kind kind = typed ? Kind::megabytes : Kind::text;
    return object(file_systems, [kind](const FileSystems::value_type& entry) {
        const auto& [total, free] = entry.second;
        return "{\"total\": " + typed_value(kind, total) +
               ", \"free\": " + typed_value(kind, free) + "}";
    });
}

}  // namespace vlrprops
