// The public conversions by way of iconv: a work buffer, a copy of the input, iconv. This
// machine's iconv still knows the codes above U+10FFFF of UTF-8's first form; the library stops there.
#pragma once

#include <iconv.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "vlrcomn/time_text.h"

namespace iconv_model {

inline std::wstring up_to_the_last_code(std::wstring text) {
    text.erase(std::find_if(text.begin(), text.end(),
                            [](wchar_t code) { return static_cast<uint32_t>(code) > 0x10FFFF; }),
               text.end());
    return text;
}

// Converts until the input ends or faults; what has been written then is the result.
inline std::string convert(iconv_t converter, std::string input, size_t output_size) {
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    std::string output(output_size, '\0');
    char* in = input.data();
    size_t in_left = input.size();
    char* out = output.data();
    size_t out_left = output.size();
    iconv(converter, &in, &in_left, &out, &out_left);
    output.resize(output.size() - out_left);
    return output;
}

// Texts end at their first zero, as C texts do.
inline std::string unicode_to_utf8(const std::wstring& text) {
    static iconv_t converter = iconv_open("UTF8", "WCHAR_T");
    const std::wstring input = up_to_the_last_code(text.c_str());
    const std::string bytes(reinterpret_cast<const char*>(input.data()), 4 * input.size());
    return convert(converter, bytes, 6 * input.size());
}

inline std::wstring utf8_to_unicode(const std::string& text) {
    static iconv_t converter =
        iconv_open(velora_com::qel::isBigEndian() ? "UCS-4BE" : "UCS-4LE", "UTF8");
    const std::string input(text.c_str());
    const std::string bytes = convert(converter, input, 4 * (input.size() + 1));
    std::wstring output(bytes.size() / 4, L'\0');
    std::memcpy(output.data(), bytes.data(), bytes.size());
    return up_to_the_last_code(output);
}

}  // namespace iconv_model
