#include <cstdint>

#include "vlrcomn/guid.h"

namespace {

// Writes a number as hexadecimal digits, most significant first, padded with zeros to its width.
template <typename Number>
char* write_hex(Number number, char* out) {
    for (int shift = 8 * static_cast<int>(sizeof number) - 4; shift >= 0; shift -= 4) {
        *out++ = "0123456789abcdef"[number >> shift & 0xF];
    }
    return out;
}

}  // namespace

char* oruUuidToStringA(const GUID* guid, char* text) {
    if (guid == nullptr || text == nullptr) {
        return nullptr;
    }
    char* out = write_hex(guid->Data1, text);
    *out++ = '-';
    out = write_hex(guid->Data2, out);
    *out++ = '-';
    out = write_hex(guid->Data3, out);
    *out++ = '-';
    for (int i = 0; i < 8; ++i) {
        if (i == 2) {
            *out++ = '-';
        }
        out = write_hex(guid->Data4[i], out);
    }
    *out = '\0';
    return text;
}
