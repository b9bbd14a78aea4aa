// /proc/meminfo and not sysinfo, whose counts do not hold a large machine's memory in a 32-bit process
// under emulation.
#include <unistd.h>

#include <algorithm>
#include <charconv>

#include "platform/linux/memory_info.h"
#include "platform/linux/text_file.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

namespace {

std::optional<uint64_t> memory_figure_now(std::string_view label) {
    const auto text = read_text_file("/proc/meminfo");
    return text ? memory_figure(*text, label) : std::nullopt;
}

}  // namespace

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

std::optional<uint64_t> installed_memory() {
    return memory_figure_now("MemTotal:");
}

std::optional<FreePages> free_pages() {
    const auto bytes = memory_figure_now("MemFree:");
    const long page_size = sysconf(_SC_PAGESIZE);
    if (!bytes || page_size <= 0) {
        return std::nullopt;
    }
    const auto page_bytes = static_cast<uint64_t>(page_size);
    return FreePages{*bytes / page_bytes, page_bytes};
}

}  // namespace velora_com::qel::platform
