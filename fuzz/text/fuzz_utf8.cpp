// Takes the input as UTF-8 and as wide text and holds every conversion against iconv.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "iconv_model.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Exact buffers, so that AddressSanitizer sees one character too many.
void check_narrow(const std::string& text) {
    const std::wstring expected = iconv_model::utf8_to_unicode(text);
    require(orumcomn_ansi_to_wide(text) == expected);

    const uint32_t size = static_cast<uint32_t>(std::strlen(text.c_str()) + 1);
    std::vector<wchar_t> buffer(size);
    const uint32_t too_small = size - 1;
    require(orumcomn_utf8_to_unicode(text.c_str(), buffer.data(), &too_small) == ORU_FAILURE);
    require(orumcomn_utf8_to_unicode(text.c_str(), buffer.data(), &size) == ORU_SUCCESS);
    require(buffer.data() == expected);
}

void check_wide(const std::wstring& text) {
    const std::string expected = iconv_model::unicode_to_utf8(text);
    require(orumcomn_wide_to_ansi(text) == expected);

    const uint32_t size = static_cast<uint32_t>(6 * std::wcslen(text.c_str()) + 1);
    std::vector<char> buffer(size);
    const uint32_t too_small = size - 1;
    require(orumcomn_unicode_to_utf8(text.c_str(), buffer.data(), &too_small) == ORU_FAILURE);
    require(orumcomn_unicode_to_utf8(text.c_str(), buffer.data(), &size) == ORU_SUCCESS);
    require(buffer.data() == expected);
    // What has a UTF-8 form comes back from it.
    const std::wstring back = orumcomn_ansi_to_wide(expected);
    require(text.compare(0, back.size(), back) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    check_narrow(bytes);
    std::wstring wide(size / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof(wchar_t));
    check_wide(wide);
    check_wide(orumcomn_ansi_to_wide(bytes));
    return 0;
}
