#include <cwchar>

#include "vlrcomn/convert.h"

namespace {

// What both C library conversions return when a character cannot be converted.
constexpr size_t conversion_fault = static_cast<size_t>(-1);

template <typename From, typename To>
size_t converted(size_t (*convert)(To*, const From**, size_t, std::mbstate_t*), const From* text,
                 size_t limit, To* destination) {
    if (text == nullptr) {
        return 0;
    }
    std::mbstate_t state = {};
    const size_t written = convert(destination, &text, limit, &state);
    return written == conversion_fault ? 0 : written;
}

}  // namespace

size_t oruStandardUtoA(const wchar_t* wide, size_t narrow_limit, char* narrow) {
    return converted(std::wcsrtombs, wide, narrow_limit, narrow);
}

size_t oruStandardAtoU(const char* narrow, size_t wide_limit, wchar_t* wide) {
    return converted(std::mbsrtowcs, narrow, wide_limit, wide);
}
