// Link-layer entries of the system's address list.
#pragma once

#include <ifaddrs.h>

#include <string>

#include "platform/platform.h"
#include "support/owners.h"

namespace velora_com::qel::network {

// A snapshot of the system's address list; null when it cannot be taken.
support::InterfaceAddresses address_snapshot();

// Six bytes as 12 lower-case hexadecimal digits.
std::string mac_text(const platform::LinkLayerAddress& address);

}  // namespace velora_com::qel::network
