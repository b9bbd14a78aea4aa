#include <array>
#include <cstdint>
#include <cstring>

#include "vlrcomn/guid.h"

namespace {

using DigitPair = std::array<char, 2>;

// The two digits of every byte.
constexpr std::array<DigitPair, 256> digit_pairs = [] {
    std::array<DigitPair, 256> pairs{};
    for (unsigned byte = 0; byte < pairs.size(); ++byte) {
        pairs[byte] = {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 0xF]};
    }
    return pairs;
}();

// Writes the low `bytes` bytes of a number, most significant first, and what ends the group.
template <unsigned bytes>
char* write_group(uint64_t number, char terminator, char* out) {
    for (unsigned i = 0; i < bytes; ++i) {
        const DigitPair& pair = digit_pairs[number >> 8 * (bytes - 1 - i) & 0xFF];
        std::memcpy(out + 2 * i, pair.data(), pair.size());
    }
    out[2 * bytes] = terminator;
    return out + 2 * bytes + 1;
}

// Joins bytes to a number, the first one most significant.
template <unsigned count>
uint64_t joined(const uint8_t* bytes) {
    uint64_t number = 0;
    for (unsigned i = 0; i < count; ++i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

}  // namespace

char* oruUuidToStringA(const GUID* guid, char* text) {
    if (guid == nullptr || text == nullptr) {
        return nullptr;
    }
    char* out = write_group<4>(guid->Data1, '-', text);
    out = write_group<2>(guid->Data2, '-', out);
    out = write_group<2>(guid->Data3, '-', out);
    out = write_group<2>(joined<2>(guid->Data4), '-', out);
    write_group<6>(joined<6>(guid->Data4 + 2), '\0', out);
    return text;
}
