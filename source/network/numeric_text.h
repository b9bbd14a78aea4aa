// Socket addresses as numeric text.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstddef>
#include <string>

namespace velora_com::qel::network {

// Room for the longest host or service name that getnameinfo writes, terminator included.
constexpr size_t name_size = 1025;

// The length that getnameinfo is told for every address: it looks at the family and takes what it needs.
constexpr socklen_t any_address_size = 128;
static_assert(sizeof(sockaddr_storage) >= any_address_size);

// The host of an address by the rules of `flags` (those of getnameinfo), in `buffer`, which holds `size`
// bytes. False on failure.
bool host_text(const sockaddr& address, int flags, char* buffer, socklen_t size = name_size);

// A copy of an address from the system's list in room for every family: only the bytes that are there
// are read, the rest is 0. An address that states no family, as masks do, gets `family`.
sockaddr_storage whole_address(const sockaddr& address, int family);

// Address AND mask in dotted decimal, for addresses as whole_address makes them.
std::string ipv4_subnet_text(const sockaddr_storage& address, const sockaddr_storage& mask);

// The text that getnameinfo writes with NI_NUMERICHOST; empty on failure.
std::string numeric_text(const sockaddr_storage& address);

}  // namespace velora_com::qel::network
