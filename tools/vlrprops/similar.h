// What the user may have meant.
#pragma once

#include <string>
#include <vector>

namespace vlrprops {

// The first of those `names` that take the fewest letters added, dropped or exchanged to become `typed`,
// whatever their case; empty when all take more than two.
std::string similar_name(const std::string& typed, const std::vector<std::string>& names);

}  // namespace vlrprops
