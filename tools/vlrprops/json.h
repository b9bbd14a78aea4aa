// The report for programs.
#pragma once

#include <string>

#include "properties.h"

namespace vlrprops {

// One object: property name to value. Every value is a text, as the library gives it.
std::string to_json(const Properties& properties);

// One object: mount point to an object with the texts "total" and "free" in MB.
std::string to_json(const FileSystems& file_systems);

}  // namespace vlrprops
