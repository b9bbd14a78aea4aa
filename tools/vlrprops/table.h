// The report for people.
#pragma once

#include <cstddef>
#include <string>

#include "properties.h"

namespace vlrprops {

// A width that no line reaches: nothing is wrapped.
constexpr size_t unlimited = static_cast<size_t>(-1);

// The properties that there are, in their groups, names and values in two columns. Values that would pass
// `width` go on in the next line. The layout depends on nothing else, so that text in a pipe keeps its
// shape: one line for each property, the value at a fixed column. For a `human`, values are in units that
// are easy to read.
std::string property_table(const Properties& properties, size_t width, bool human);

// One line for each file system: total and free space at columns fixed for the width, then the mount point.
std::string file_system_table(const FileSystems& file_systems, size_t width, bool human);

}  // namespace vlrprops
