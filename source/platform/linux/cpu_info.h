// What the text of /proc/cpuinfo says about the processor.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velora_com::qel::platform {

struct CpuInfo {
    std::optional<uint64_t> clock_hz;     // of the fastest processor listed
    std::optional<int32_t> architecture;  // both as platform.h numbers them
    std::optional<int32_t> type;
};

CpuInfo parse_cpu_info(std::string_view text);

}  // namespace velora_com::qel::platform
