// What the options ask for, collected and put into words.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "options.h"

namespace vlrprops {

// The report for a terminal of that width. Nothing when memory ran out while collecting.
std::optional<std::string> report(const Options& options, size_t width);

}  // namespace vlrprops
