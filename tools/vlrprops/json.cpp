#include "json.h"

#include <cstdio>

#include "text.h"

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

std::string value_json(const std::wstring& value) {
    return quoted(value);
}

std::string value_json(const FileSystems::mapped_type& space) {
    return "{\"total\": " + quoted(space.first) + ", \"free\": " + quoted(space.second) + "}";
}

template <typename Map>
std::string object(const Map& map) {
    std::string json = "{";
    const char* separator = "\n";
    for (const auto& [name, value] : map) {
        json += separator;
        json += "  " + quoted(name) + ": " + value_json(value);
        separator = ",\n";
    }
    return json + (map.empty() ? "}\n" : "\n}\n");
}

}  // namespace

std::string to_json(const Properties& properties) {
    return object(properties);
}

std::string to_json(const FileSystems& file_systems) {
    return object(file_systems);
}

}  // namespace vlrprops
