#pragma once

#include <cstddef>

namespace velora_com::qel::support {

// Room for one of the agent's texts of bounded length (paths, patterns, platform lists): 259 characters and
// the terminator. What is longer is refused where it would become the name of something else.
constexpr size_t fixed_text_size = 260;

}  // namespace velora_com::qel::support
