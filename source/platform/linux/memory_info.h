// Figures out of the text of /proc/meminfo.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velora_com::qel::platform {

// The bytes that the line `label` ("MemTotal:") states. Nothing when the line or its number is missing.
std::optional<uint64_t> memory_figure(std::string_view text, std::string_view label);

}  // namespace velora_com::qel::platform
