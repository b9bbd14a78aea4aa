// The wildcard matcher against its rules as they are told. The input is a pattern and a name, parted by a
// zero byte. Few stars, since the model tries every way.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "vlrcomn/file.h"

namespace {

// One call for each step of pattern and name.
// NOLINTNEXTLINE(misc-no-recursion): a model that is as plain as can be
bool wildcard_model(const char* pattern, const char* name) {
    switch (*pattern) {
        case '\0':
            return true;
        case '?':
            return *name != '\0' && wildcard_model(pattern + 1, name + 1);
        case '*':
            if (*name == '\0') {
                return true;
            }
            for (; *name != '\0'; ++name) {
                if (wildcard_model(pattern + 1, name)) {
                    return true;
                }
            }
            return false;
        default:
            return *pattern == *name && wildcard_model(pattern + 1, name + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string pattern = text.substr(0, text.find('\0'));
    const std::string name = text.substr(std::min(size, pattern.size() + 1));
    const int result = oruWildCardMatch(pattern.c_str(), name.c_str());
    const bool affordable = std::count(pattern.begin(), pattern.end(), '*') <= 6 && size <= 64;
    if (affordable && result != (wildcard_model(pattern.c_str(), name.c_str()) ? 0 : 1)) {
        abort();
    }
    return 0;
}
