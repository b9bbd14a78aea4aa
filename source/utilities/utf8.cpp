#include "utilities/utf8.h"

#include <cstdint>
#include <cstring>

namespace velora_com::qel::utf8 {

static_assert(sizeof(wchar_t) == sizeof(uint32_t), "wide text has 32 bits a character");

namespace {

// A code that takes `bytes` bytes, two or more, has at most this many bits.
constexpr unsigned code_bits(unsigned bytes) {
    return 5 * bytes + 1;
}

constexpr bool is_surrogate(uint32_t code) {
    return (code & 0xFFFFF800U) == 0xD800;
}

constexpr unsigned bytes_for(uint32_t code) {
    if (code < 0x80) {
        return 1;
    }
    unsigned bytes = 2;
    while (bytes < max_bytes_per_character && code >> code_bits(bytes) != 0) {
        ++bytes;
    }
    return bytes;
}

// Bytes of the sequence that `lead`, not an ASCII byte, begins; 0 when it begins none.
constexpr unsigned bytes_after(unsigned char lead) {
    if (lead < 0xE0) {
        return lead < 0xC2 ? 0 : 2;
    }
    if (lead < 0xF0) {
        return 3;
    }
    return lead < 0xF8 ? 4 : lead < 0xFC ? 5 : lead < 0xFE ? 6 : 0;
}

constexpr bool is_continuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80;
}

// Blocks of ASCII are copied several characters at once.
constexpr ptrdiff_t wide_block = 4;
constexpr ptrdiff_t narrow_block = sizeof(uint64_t);

bool is_ascii_block(const wchar_t* text) noexcept {
    uint32_t joined = 0;
    for (ptrdiff_t i = 0; i < wide_block; ++i) {
        joined |= static_cast<uint32_t>(text[i]);
    }
    return joined < 0x80;
}

bool is_ascii_block(const char* text) noexcept {
    uint64_t joined = 0;
    std::memcpy(&joined, text, sizeof joined);
    return (joined & UINT64_C(0x8080808080808080)) == 0;
}

// Copies whole blocks of ASCII from the front of a text, moving both positions behind them.
template <ptrdiff_t block, typename From, typename To>
void copy_ascii_blocks(const From*& text, const From* end, To*& out) noexcept {
    while (end - text >= block && is_ascii_block(text)) {
        for (ptrdiff_t i = 0; i < block; ++i) {
            out[i] = static_cast<To>(text[i]);
        }
        text += block;
        out += block;
    }
}

}  // namespace

size_t encoded_size(const wchar_t* text, size_t length) noexcept {
    size_t size = 0;
    for (size_t i = 0; i < length; ++i) {
        size += bytes_for(static_cast<uint32_t>(text[i]));
    }
    return size;
}

size_t decoded_size(const char* text, size_t length) noexcept {
    size_t size = 0;
    for (size_t i = 0; i < length; ++i) {
        if (!is_continuation(static_cast<unsigned char>(text[i]))) {
            ++size;
        }
    }
    return size;
}

char* encode(const wchar_t* text, size_t length, char* out) noexcept {
    const wchar_t* const end = text + length;
    while (text != end) {
        uint32_t code = static_cast<uint32_t>(*text);
        if (code < 0x80) {
            *out++ = static_cast<char>(code);
            ++text;
            copy_ascii_blocks<wide_block>(text, end, out);
            continue;
        }
        if (is_surrogate(code) || code > 0x7FFFFFFF) {
            break;
        }
        const unsigned bytes = bytes_for(code);
        for (unsigned i = bytes - 1; i > 0; --i) {
            out[i] = static_cast<char>(0x80U | (code & 0x3FU));
            code >>= 6;
        }
        out[0] = static_cast<char>((0xFF00U >> bytes) | code);
        out += bytes;
        ++text;
    }
    return out;
}

wchar_t* decode(const char* text, size_t length, wchar_t* out) noexcept {
    const char* const end = text + length;
    while (text != end) {
        const unsigned char lead = static_cast<unsigned char>(*text);
        if (lead < 0x80) {
            *out++ = static_cast<wchar_t>(lead);
            ++text;
            copy_ascii_blocks<narrow_block>(text, end, out);
            continue;
        }
        const unsigned bytes = bytes_after(lead);
        if (bytes == 0 || static_cast<size_t>(end - text) < bytes) {
            break;
        }
        uint32_t code = lead & (0x7FU >> bytes);
        unsigned i = 1;
        for (; i < bytes; ++i) {
            const unsigned char byte = static_cast<unsigned char>(text[i]);
            if (!is_continuation(byte)) {
                return out;
            }
            code = code << 6 | (byte & 0x3FU);
        }
        // Overlong forms of two bytes have no lead byte.
        const bool overlong = bytes > 2 && code >> code_bits(bytes - 1) == 0;
        if (overlong || is_surrogate(code)) {
            break;
        }
        *out++ = static_cast<wchar_t>(code);
        text += bytes;
    }
    return out;
}

}  // namespace velora_com::qel::utf8
