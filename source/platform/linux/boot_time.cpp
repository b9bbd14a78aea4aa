// The boot time stands in /proc/stat as "btime SECONDS".
#include <cinttypes>
#include <cstdio>

#include "platform/platform.h"
#include "support/owners.h"

namespace velora_com::qel::platform {

std::optional<int64_t> boot_time() {
    const support::CancellationOff no_cancellation;
    const support::File file(std::fopen("/proc/stat", "re"));
    std::optional<int64_t> seconds;
    char* line = nullptr;
    size_t capacity = 0;
    while (file && !seconds && getline(&line, &capacity, file.get()) >= 0) {
        int64_t value = 0;
        if (std::sscanf(line, "btime %" SCNd64, &value) == 1) {
            seconds = value;
        }
    }
    const support::Allocated<char> owner(line);
    return seconds;
}

}  // namespace velora_com::qel::platform
