#include <charconv>
#include <limits>
#include <string>

#include "support/boundary.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel {

namespace {

template <typename String>
String decimal(long value) {
    char digits[std::numeric_limits<long>::digits10 + 2];  // one more digit and a sign
    char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return support::or_failure(String(), [&] { return String(&digits[0], end); });
}

}  // namespace

std::string orumcomn_long_to_ansi_string(long value) {
    return decimal<std::string>(value);
}

std::wstring orumcomn_long_to_wide_string(long value) {
    return decimal<std::wstring>(value);
}

}  // namespace velora_com::qel
