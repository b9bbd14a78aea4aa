#include <charconv>
#include <string_view>

#include "platform/linux/text_file.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<int64_t> boot_time() {
    const auto text = read_text_file("/proc/stat");
    if (!text) {
        return std::nullopt;
    }
    constexpr std::string_view label = "\nbtime ";
    const size_t found = text->find(label);
    if (found == std::string::npos) {
        return std::nullopt;
    }
    int64_t seconds = 0;
    const char* const digits = text->data() + found + label.size();
    const auto parsed = std::from_chars(digits, text->data() + text->size(), seconds);
    return parsed.ec == std::errc() ? std::optional(seconds) : std::nullopt;
}

}  // namespace velora_com::qel::platform
