// Small editors of narrow text. Letters and white space are those of the C locale: a byte means the same
// whatever locale the process has set, and the parts of a UTF-8 sequence are never taken for either.
#include <algorithm>
#include <cstring>
#include <string>

#include "support/ascii.h"
#include "support/boundary.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

// A copy of `text` with every character mapped.
std::string mapped(const std::string& text, char (*map)(char)) {
    return support::or_failure(std::string(), [&] {
        std::string result(text);
        std::transform(result.begin(), result.end(), result.begin(), map);
        return result;
    });
}

}  // namespace

namespace velora_com::qel {

std::string orumcomn_convert_to_upper(const std::string& text) {
    return mapped(text, support::to_upper);
}

std::string orumcomn_convert_to_lower(const std::string& text) {
    return mapped(text, support::to_lower);
}

std::string orumcomn_strip_leading_whitespace(const std::string& text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), support::is_space);
    return support::or_failure(std::string(), [&] { return std::string(begin, text.end()); });
}

std::string orumcomn_strip_trailing_whitespace(const std::string& text) {
    const auto end = std::find_if_not(text.rbegin(), text.rend(), support::is_space).base();
    return support::or_failure(std::string(), [&] { return std::string(text.begin(), end); });
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
