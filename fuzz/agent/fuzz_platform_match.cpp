// The platform matcher against a model on strings. Input: the platform, a line feed, the list.
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>

#include "vlrcomn/agent_identity.h"

namespace {

std::string without_spaces(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

// Up to three numbers with ":" between, by the C library's reader.
void read(const char* text, int64_t (&parts)[3]) {
    for (int64_t& part : parts) {
        char* end = nullptr;
        const long long value = std::strtoll(text, &end, 10);
        if (end == text) {
            return;
        }
        part = std::clamp<long long>(value, std::numeric_limits<int32_t>::min(),
                                     std::numeric_limits<int32_t>::max());
        if (*end != ':') {
            return;
        }
        text = end + 1;
    }
}

uint64_t number(const int64_t (&parts)[3]) {
    const auto part = [&](int i) { return static_cast<uint64_t>(parts[i]); };
    return part(0) * 0x1000000000000 + part(1) * 0x10000 + part(2);
}

uint32_t model(const std::string& platform_text, const std::string& list_text) {
    const std::string platform = without_spaces(platform_text);
    std::istringstream list(without_spaces(list_text));
    if (platform.size() > 259 || list.str().size() > 259) {
        return ORU_FAILURE;
    }
    const std::string name = platform.substr(0, platform.find(':'));
    int64_t own[3] = {0, 0, 0};
    if (name != platform) {
        read(platform.c_str() + name.size() + 1, own);
    }
    int64_t lower[3] = {0, 0, 0};
    int64_t upper[3] = {65535, -1, 65535};
    uint32_t result = ORU_FAILURE;
    for (std::string entry; std::getline(list, entry, '|');) {
        const std::string wanted = entry.substr(0, entry.find(':'));
        if (entry.empty() || name.find(wanted) == std::string::npos) {
            continue;
        }
        if (wanted == entry) {
            return 0;
        }
        result = 1;
        const std::string range = entry.substr(wanted.size() + 1);
        read(range.c_str(), lower);
        if (const size_t dash = range.find('-'); dash != std::string::npos) {
            read(range.c_str() + dash + 1, upper);
        }
        if (number(own) >= number(lower) && number(own) <= number(upper)) {
            return 0;
        }
    }
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string platform(data, data + size);
    platform.erase(std::remove(platform.begin(), platform.end(), '\0'), platform.end());
    std::string list;
    if (const size_t line_end = platform.find('\n'); line_end != std::string::npos) {
        list = platform.substr(line_end + 1);
        platform.resize(line_end);
    }
    if (orumcomn_IsPlatformMatch(platform.c_str(), list.c_str()) != model(platform, list)) {
        std::abort();
    }
    return 0;
}
