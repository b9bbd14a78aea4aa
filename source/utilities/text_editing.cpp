// Small editors of narrow text. Letters and white space are those of the C locale: a byte means the same
// whatever locale the process has set, and the parts of a UTF-8 sequence are never taken for either.
#include <algorithm>
#include <cstring>
#include <string>

#include "support/boundary.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

constexpr char white_space[] = " \t\n\v\f\r";

// A copy of `text` with `distance` added to each letter from `first` to `last`.
std::string shift_letters(const std::string& text, char first, char last, int distance) {
    return support::or_failure(std::string(), [&] {
        std::string result(text);
        for (char& letter : result) {
            if (letter >= first && letter <= last) {
                letter = static_cast<char>(letter + distance);
            }
        }
        return result;
    });
}

// A copy of the bytes from `begin` up to `end`.
std::string part(const std::string& text, size_t begin, size_t end) {
    return support::or_failure(std::string(), [&] { return text.substr(begin, end - begin); });
}

}  // namespace

namespace velora_com::qel {

std::string orumcomn_convert_to_upper(const std::string& text) {
    return shift_letters(text, 'a', 'z', 'A' - 'a');
}

std::string orumcomn_convert_to_lower(const std::string& text) {
    return shift_letters(text, 'A', 'Z', 'a' - 'A');
}

std::string orumcomn_strip_leading_whitespace(const std::string& text) {
    return part(text, std::min(text.find_first_not_of(white_space), text.size()), text.size());
}

std::string orumcomn_strip_trailing_whitespace(const std::string& text) {
    // All blank: npos + 1 is 0.
    return part(text, 0, text.find_last_not_of(white_space) + 1);
}

}  // namespace velora_com::qel

void orumcomn_chop_semicolon(char* text) {
    if (text != nullptr) {
        text[std::strcspn(text, ";")] = '\0';
    }
}

void orumcomn_append_backslash_check(char* text) {
    if (text == nullptr) {
        return;
    }
    const size_t length = std::strlen(text);
    if (length == 0 || text[length - 1] != '/') {
        std::memcpy(text + length, "/", sizeof "/");
    }
}
