// Imitation of the Mac's header: an address states its own length there.
#pragma once

#include_next <sys/socket.h>

#define AF_LINK 18

struct mac_sockaddr {
    unsigned char sa_len;
    unsigned char sa_family;
    char sa_data[14];
};
#define sockaddr mac_sockaddr
