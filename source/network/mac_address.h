#pragma once

#include <string>

#include "platform/platform.h"

namespace velora_com::qel::network {

// Six bytes as 12 lower-case hexadecimal digits.
std::string mac_text(const platform::LinkLayerAddress& address);

}  // namespace velora_com::qel::network
