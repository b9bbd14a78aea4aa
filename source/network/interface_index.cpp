#include "network/interface_index.h"

#include <sys/socket.h>
// After sys/socket.h, as older systems need it.
#include <net/if.h>

#include <cstring>

#include "support/config.h"

#ifdef VLRCOMN_HAVE_SIOCGIFINDEX
#include <sys/ioctl.h>
#endif

namespace velora_com::qel::network {

#ifdef VLRCOMN_HAVE_SIOCGIFINDEX

// if_nametoindex would open and close a socket, which costs several times the question itself.
uint32_t interface_index(const char* name, int socket) {
    const size_t length = std::strlen(name);
    ifreq request{};
    if (length >= sizeof request.ifr_name) {
        return 0;
    }
    std::memcpy(request.ifr_name, name, length);
    if (ioctl(socket, SIOCGIFINDEX, &request) != 0) {
        return 0;
    }
    return static_cast<uint32_t>(request.ifr_ifindex);
}

#else

uint32_t interface_index(const char* name, int) {
    return if_nametoindex(name);
}

#endif

}  // namespace velora_com::qel::network
