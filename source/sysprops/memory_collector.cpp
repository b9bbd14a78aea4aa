#include <cstdint>
#include <optional>

#include "platform/platform.h"
#include "support/boundary.h"
#include "sysprops/rounding.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

bool ISysProps::GetMemoryInformation(MemoryInformation& info) {
    return support::or_failure(false, [&] {
        const auto [total, pages] = platform::memory_facts();
        if (total) {
            info.wstrTotalPhysicalMemory = std::to_wstring(*total);
        }
        if (!pages) {
            return false;
        }
        const uint64_t free = pages->count * pages->page_size;
        info.wstrFreeMemory = std::to_wstring(coarsened(free, total.value_or(0)));
        return true;
    });
}

}  // namespace velora_com::qel::sysprops
