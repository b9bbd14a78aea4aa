#include <sys/sysinfo.h>
#include <unistd.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<uint64_t> installed_memory() {
    struct sysinfo info;
    if (sysinfo(&info) != 0) {
        return std::nullopt;
    }
    return uint64_t{info.totalram} * info.mem_unit;
}

std::optional<FreePages> free_pages() {
    struct sysinfo info;
    const long page_size = sysconf(_SC_PAGESIZE);
    if (sysinfo(&info) != 0 || page_size <= 0) {
        return std::nullopt;
    }
    const auto page_bytes = static_cast<uint64_t>(page_size);
    return FreePages{uint64_t{info.freeram} * info.mem_unit / page_bytes, page_bytes};
}

}  // namespace velora_com::qel::platform
