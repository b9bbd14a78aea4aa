#include "text.h"

#include <cwchar>

#include "vlrcomn/system_properties.h"

namespace vlrprops {

namespace {

bool is_control(wchar_t character) {
    return (character >= 0 && character < 0x20) || (character >= 0x7F && character < 0xA0);
}

// The blocks that terminals draw two columns wide. Some characters in them are narrow; a line is then
// shorter than it might be.
size_t character_columns(wchar_t character) {
    return (character >= 0x1100 && character < 0x1160) ||
                   (character >= 0x2E80 && character < 0xD7B0) ||
                   (character >= 0xF900 && character < 0xFB00) ||
                   (character >= 0xFE30 && character < 0xFE70) ||
                   (character >= 0xFF00 && character < 0xFF61) || character >= 0x1F300
               ? 2
               : 1;
}

}  // namespace

std::string utf8(const std::wstring& text) {
    return velora_com::qel::sysprops::sysprops_wide_to_ansi(text);
}

std::wstring one_line(const std::wstring& text) {
    std::wstring line;
    for (const wchar_t character : text) {
        if (is_control(character)) {
            wchar_t escape[8];
            std::swprintf(escape, 8, L"\\u%04x", static_cast<unsigned int>(character));
            line += escape;
        } else {
            line += character;
        }
    }
    return line;
}

std::vector<std::wstring> wrapped(const std::wstring& text, size_t width) {
    std::vector<std::wstring> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = start;
        size_t used = 0;
        size_t breakable = 0;
        while (end < text.size() && used + character_columns(text[end]) <= width) {
            used += character_columns(text[end]);
            ++end;
            if (std::wcschr(L" ,/-.", text[end - 1]) != nullptr) {
                breakable = end;
            }
        }
        if (end < text.size() && breakable > start) {
            end = breakable;
        }
        end = end == start ? start + 1 : end;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

}  // namespace vlrprops
