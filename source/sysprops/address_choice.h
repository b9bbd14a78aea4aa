// Which of the machine's addresses the report names.
#pragma once

#include <string>

#include "vlrcomn/net_interface.h"
#include "vlrcomn/property_keys.h"

namespace velora_com::qel::sysprops {

// Writes the four address fields of `info` from the chosen address of `interfaces`, which holds at least
// one: `last_known` when an interface has exactly that text; else the first address of its family,
// interfaces by ascending index; else the first address of the interface with the lowest index.
void choose_address(NetInterfaceList& interfaces, const std::string& last_known,
                    NetworkInformation& info);

}  // namespace velora_com::qel::sysprops
