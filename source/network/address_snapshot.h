#pragma once

#include "support/owners.h"

namespace velora_com::qel::network {

// A snapshot of the system's address list; null when it cannot be taken.
support::InterfaceAddresses address_snapshot();

}  // namespace velora_com::qel::network
