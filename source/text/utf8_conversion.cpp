#include <climits>
#include <cstring>
#include <cwchar>

#include "support/boundary.h"
#include "text/utf8.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

// The longest text whose six bytes a character and terminator are still a positive 32-bit number.
constexpr size_t max_wide_length = (INT32_MAX - 1) / utf8::max_bytes_per_character;
constexpr size_t max_narrow_length = UINT32_MAX - 1;

}  // namespace

uint32_t orumcomn_unicode_to_utf8(const wchar_t* wide, char* narrow, const uint32_t* size) {
    if (wide == nullptr || narrow == nullptr || size == nullptr || *size == 0 ||
        *size > INT32_MAX) {
        return ORU_FAILURE;
    }
    const size_t length = std::wcslen(wide);
    if (length > max_wide_length || utf8::max_bytes_per_character * length + 1 > *size) {
        return ORU_FAILURE;
    }
    *utf8::encode(wide, length, narrow) = '\0';
    return ORU_SUCCESS;
}

uint32_t orumcomn_utf8_to_unicode(const char* narrow, wchar_t* wide, const uint32_t* size) {
    if (narrow == nullptr || wide == nullptr || size == nullptr) {
        return ORU_FAILURE;
    }
    const size_t length = std::strlen(narrow);
    if (length >= *size) {
        return ORU_FAILURE;
    }
    *utf8::decode(narrow, length, wide) = L'\0';
    return ORU_SUCCESS;
}

namespace velora_com::qel {

// Measured first: clearing the six bytes a character of the C function would cost more than converting.
std::string orumcomn_wide_to_ansi(const std::wstring& text) {
    const size_t length = std::wcslen(text.c_str());
    if (length > max_wide_length) {
        return {};
    }
    return support::or_failure(std::string(), [&] {
        std::string result(utf8::encoded_size(text.c_str(), length), '\0');
        const char* const end = utf8::encode(text.c_str(), length, result.data());
        result.resize(static_cast<size_t>(end - result.data()));
        return result;
    });
}

std::wstring orumcomn_ansi_to_wide(const std::string& text) {
    const size_t length = std::strlen(text.c_str());
    if (length > max_narrow_length) {
        return {};
    }
    return support::or_failure(std::wstring(), [&] {
        std::wstring result(length, L'\0');
        const wchar_t* const end = utf8::decode(text.c_str(), length, result.data());
        result.resize(static_cast<size_t>(end - result.data()));
        return result;
    });
}

namespace orumcomn {

std::string wide_to_ansi(const std::wstring& text) {
    return orumcomn_wide_to_ansi(text);
}

std::wstring ansi_to_wide(const std::string& text) {
    return orumcomn_ansi_to_wide(text);
}

}  // namespace orumcomn

}  // namespace velora_com::qel
