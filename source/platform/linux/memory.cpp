// /proc/meminfo and not sysinfo, whose counts do not hold a large machine's memory in a 32-bit process
// under emulation.
#include <unistd.h>

#include <algorithm>
#include <charconv>

#include "platform/linux/memory_info.h"
#include "platform/linux/text_file.h"
#include "platform/platform.h"

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

MemoryFacts memory_facts() {
    const auto text = read_text_file("/proc/meminfo");
    if (!text) {
        return {};
    }
    MemoryFacts facts = {memory_figure(*text, "MemTotal:"), std::nullopt};
    const auto free_bytes = memory_figure(*text, "MemFree:");
    const long page_size = sysconf(_SC_PAGESIZE);
    if (free_bytes && page_size > 0) {
        const auto page_bytes = static_cast<uint64_t>(page_size);
        facts.free = FreePages{*free_bytes / page_bytes, page_bytes};
    }
    return facts;
}

}  // namespace velora_com::qel::platform
