#include <cstring>

#include "vlrcomn/file.h"

// The rules, stated by position: a star leads to every later position before the name's end, the name's end
// at a star is a match, the pattern's end is a match.
//
// So the pattern is a row of star-free pieces. The first lies at the name's start. Each later one may lie
// anywhere behind its predecessor, and taking the leftmost place leaves most room to the rest; only a
// piece that ends where the name ends wins at once, whatever follows it, so that place is tried as well.
// That is all the choice there is: no stepping back over earlier pieces and no table.

namespace {

bool is_piece_end(char symbol) {
    return symbol == '\0' || symbol == '*';
}

// Whether the piece of `length` symbols fits at `name`, which has at least as many bytes left.
bool fits(const char* piece, size_t length, const char* name) {
    for (size_t i = 0; i < length; ++i) {
        if (piece[i] != name[i] && piece[i] != '?') {
            return false;
        }
    }
    return true;
}

// The leftmost place of the piece in [name, end), or null.
const char* leftmost(const char* piece, size_t length, const char* name, const char* end) {
    if (static_cast<size_t>(end - name) < length) {
        return nullptr;
    }
    for (const char* const last = end - length; name <= last; ++name) {
        if (piece[0] != '?') {
            const auto places = static_cast<size_t>(last - name) + 1;
            name = static_cast<const char*>(std::memchr(name, piece[0], places));
            if (name == nullptr) {
                return nullptr;
            }
        }
        if (fits(piece, length, name)) {
            return name;
        }
    }
    return nullptr;
}

bool matches(const char* pattern, const char* name) {
    for (; !is_piece_end(*pattern); ++pattern, ++name) {
        if (*name == '\0' || (*pattern != *name && *pattern != '?')) {
            return false;
        }
    }
    if (*pattern == '\0') {
        return true;
    }
    const char* const end = name + std::strlen(name);
    while (*pattern == '*') {
        if (name == end) {
            return true;
        }
        const char* const piece = ++pattern;
        while (!is_piece_end(*pattern)) {
            ++pattern;
        }
        const auto length = static_cast<size_t>(pattern - piece);
        if (length == 0) {
            continue;
        }
        if (length <= static_cast<size_t>(end - name) && fits(piece, length, end - length)) {
            return true;
        }
        name = leftmost(piece, length, name, end);
        if (name == nullptr) {
            return false;
        }
        name += length;
    }
    return true;
}

}  // namespace

int oruWildCardMatch(const char* pattern, const char* name) {
    return pattern == nullptr || matches(pattern, name != nullptr ? name : "") ? 0 : 1;
}
