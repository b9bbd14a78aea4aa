#include "platform/linux/memory_info.h"

#include <algorithm>
#include <charconv>

namespace velora_com::qel::platform {

std::optional<uint64_t> memory_figure(std::string_view text, std::string_view label) {
    size_t start = 0;
    while (text.substr(start, label.size()) != label) {
        const size_t line_end = text.find('\n', start);
        if (line_end == std::string_view::npos) {
            return std::nullopt;
        }
        start = line_end + 1;
    }
    text.remove_prefix(start + label.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    uint64_t kibibytes = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), kibibytes);
    return parsed.ec == std::errc() ? std::optional(kibibytes * 1024) : std::nullopt;
}

}  // namespace velora_com::qel::platform
