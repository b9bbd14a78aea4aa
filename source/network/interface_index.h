#pragma once

#include <cstdint>

namespace velora_com::qel::network {

// What if_nametoindex says of a name: the interface's index now, 0 when there is none. `socket` is any
// open datagram socket; systems that ask through one then need not open it for every question.
uint32_t interface_index(const char* name, int socket);

}  // namespace velora_com::qel::network
