#pragma once

#include <string>

#include "support/owners.h"

namespace velora_com::qel::network {

// The addresses of a host for stream sockets, and the code of getaddrinfo (0 with a list, -1 for an empty
// host). Brackets and scope of the host are dropped.
struct Resolved {
    int code;
    support::AddressInfo addresses;
};
Resolved resolve(std::string host, const std::string& port, bool ipv4_only);

}  // namespace velora_com::qel::network
