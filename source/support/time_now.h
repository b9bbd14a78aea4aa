// The present moment, broken down. Nothing when the system cannot do that.
#pragma once

#include <ctime>
#include <optional>

namespace velora_com::qel::support {

std::optional<std::tm> gmt_now();
std::optional<std::tm> local_time_now();

}  // namespace velora_com::qel::support
