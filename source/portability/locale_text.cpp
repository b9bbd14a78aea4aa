#include <cwchar>

#include "vlrcomn/convert.h"

namespace {

// What both C library conversions return when a character cannot be converted.
constexpr size_t conversion_fault = static_cast<size_t>(-1);

}  // namespace

size_t oruStandardUtoA(const wchar_t* wide, size_t narrow_limit, char* narrow) {
    if (wide == nullptr) {
        return 0;
    }
    std::mbstate_t state = {};
    const size_t written = std::wcsrtombs(narrow, &wide, narrow_limit, &state);
    return written == conversion_fault ? 0 : written;
}

size_t oruStandardAtoU(const char* narrow, size_t wide_limit, wchar_t* wide) {
    if (narrow == nullptr) {
        return 0;
    }
    std::mbstate_t state = {};
    const size_t written = std::mbsrtowcs(wide, &narrow, wide_limit, &state);
    return written == conversion_fault ? 0 : written;
}
