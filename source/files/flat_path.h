// The text half of path resolution, shared by the flattener and the resolver.
#pragma once

#include <string>
#include <string_view>

namespace velora_com::qel::files {

// Bytes of a working directory's or a link's text that are looked at, the terminator's place included.
constexpr size_t buffer_size = 1024;

// The working directory; empty when it cannot be read or does not fit.
std::string working_directory();

// Whether flatten() takes `path` against a base: it does not start with a slash, or is just one.
bool is_relative(std::string_view path);

// Flattens `path` in place, a relative one against `base` (absolute without slash at its end, or
// empty). False when ".." leads above the root; `path` is then unspecified.
bool flatten(std::string& path, std::string_view base);

}  // namespace velora_com::qel::files
