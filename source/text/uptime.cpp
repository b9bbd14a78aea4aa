#include <cstdint>
#include <ctime>

#include "platform/platform.h"
#include "support/boundary.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel {

long get_system_uptime_osx() {
    const std::optional<int64_t> boot =
        support::or_failure(std::optional<int64_t>(), platform::boot_time);
    return boot ? static_cast<long>(std::time(nullptr) - *boot) : INT32_MAX;
}

long orumcomn_get_system_uptime() {
    return get_system_uptime_osx();
}

}  // namespace velora_com::qel
