// /proc/meminfo and not sysinfo, whose counts do not hold a large machine's memory in a 32-bit process
// under emulation.
#include <unistd.h>

#include "platform/linux/memory_info.h"
#include "platform/linux/text_file.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

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
