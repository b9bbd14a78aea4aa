// Whole files of /proc and /sys.
#pragma once

#include <optional>
#include <string>

namespace velora_com::qel::platform {

// The contents of a file whose size is not known before it is read. Nothing when it cannot be
// opened or read.
std::optional<std::string> read_text_file(const char* path);

}  // namespace velora_com::qel::platform
