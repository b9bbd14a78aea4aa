#include <sys/time.h>

#include "platform/macosx/sysctl_value.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<int64_t> boot_time() {
    const auto time = sysctl_value<timeval>(CTL_KERN, KERN_BOOTTIME);
    return time ? std::optional<int64_t>(time->tv_sec) : std::nullopt;
}

}  // namespace velora_com::qel::platform
