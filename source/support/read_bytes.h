#pragma once

#include <cstddef>
#include <string>

namespace velora_com::qel::support {

// Appends to `bytes` what `descriptor` still gives, until its end or until `bytes` holds `most`. False with
// errno set when a read fails; what came before stays. Nothing is allocated within the capacity of `bytes`.
bool read_bytes(int descriptor, std::string& bytes, size_t most);

}  // namespace velora_com::qel::support
