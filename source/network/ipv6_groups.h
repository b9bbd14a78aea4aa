// The IPv6 forms for use inside the library: as the exported functions, but they throw std::bad_alloc.
#pragma once

#include <string>

namespace velora_com::qel::network {

std::string expand_ipv6(std::string address);
std::string ipv6_subnet(const std::string& address, const std::string& mask);

}  // namespace velora_com::qel::network
