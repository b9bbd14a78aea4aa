#include <charconv>
#include <type_traits>

#include "vlrcomn/convert.h"

namespace {

// The longest number is a 64-bit one in radix 8: 22 digits.
constexpr ptrdiff_t max_digits = 22;

// Writes a signed number in radix 10 and its two's complement in radix 16 and 8.
template <typename Signed>
char* write_number(Signed value, char* destination, int radix) {
    if (destination == nullptr || (radix != 10 && radix != 16 && radix != 8)) {
        return nullptr;
    }
    char* const limit = destination + max_digits;
    const auto bits = static_cast<std::make_unsigned_t<Signed>>(value);
    const std::to_chars_result written = radix == 10
                                             ? std::to_chars(destination, limit, value)
                                             : std::to_chars(destination, limit, bits, radix);
    *written.ptr = '\0';
    return destination;
}

}  // namespace

char* oruItoa(int32_t value, char* destination, int radix) {
    return write_number(value, destination, radix);
}

char* oruItot(int32_t value, char* destination, int radix) {
    return oruItoa(value, destination, radix);
}

char* oruUltot(uint32_t value, char* destination, int radix) {
    return write_number(static_cast<int32_t>(value), destination, radix);
}

char* oruI64toa(int64_t value, char* destination, int radix) {
    return write_number(value, destination, radix);
}

char* oruI64tot(int64_t value, char* destination, int radix) {
    return oruI64toa(value, destination, radix);
}

int64_t oruAtoi64(const char* text) {
    uint64_t value = 0;
    for (; text != nullptr && *text != '\0'; ++text) {
        // The byte is signed on every host.
        const int64_t digit = static_cast<signed char>(*text) - '0';
        value = value * 10 + static_cast<uint64_t>(digit);
    }
    return static_cast<int64_t>(value);
}

int64_t oruTtoi64(const char* text) {
    return oruAtoi64(text);
}
