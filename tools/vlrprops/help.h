// What --help prints.
#pragma once

#include <cstddef>
#include <string>

namespace vlrprops {

// The help in lines of at most `width` columns, and at most 80.
std::string help_text(size_t width);

}  // namespace vlrprops
