// The report for programs.
#pragma once

#include <string>

#include "properties.h"

namespace vlrprops {

// One object: property name to value. Typed, numbers are numbers, sizes are in bytes, clocks in MHz, and a fact
// that was not found is null; otherwise every value is a text, as the library gives it.
std::string to_json(const Properties& properties, bool typed);

// One object: mount point to an object with "total" and "free": typed, in bytes; otherwise texts in MB.
std::string to_json(const FileSystems& file_systems, bool typed);

}  // namespace vlrprops
