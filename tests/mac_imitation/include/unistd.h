// The host's header, with the domain name answered by the imitation.
#pragma once

#include_next <unistd.h>

#define getdomainname mac_getdomainname
extern "C" int getdomainname(char* name, int size) noexcept;
