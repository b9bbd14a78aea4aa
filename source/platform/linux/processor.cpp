#include <unistd.h>

#include "platform/linux/cpu_info.h"
#include "platform/linux/text_file.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<int32_t> processor_count() {
    const long count = sysconf(_SC_NPROCESSORS_ONLN);
    return count > 0 ? std::optional(static_cast<int32_t>(count)) : std::nullopt;
}

ProcessorFacts processor_facts() {
    const auto text = read_text_file("/proc/cpuinfo");
    return text ? parse_cpu_info(*text) : ProcessorFacts{};
}

}  // namespace velora_com::qel::platform
