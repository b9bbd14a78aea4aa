// What the text of /proc/cpuinfo says about the processor.
#pragma once

#include <string_view>

#include "platform/platform.h"

namespace velora_com::qel::platform {

ProcessorFacts parse_cpu_info(std::string_view text);

}  // namespace velora_com::qel::platform
