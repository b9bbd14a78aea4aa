#include "network/socket.h"

#include <fcntl.h>
#include <sys/socket.h>

#include "support/config.h"

namespace velora_com::qel::network {

support::FileDescriptor open_socket(int family, int type, int protocol) {
#ifdef VLRCOMN_HAVE_SOCK_CLOEXEC
    return support::FileDescriptor(socket(family, type | SOCK_CLOEXEC, protocol));
#else
    support::FileDescriptor descriptor(socket(family, type, protocol));
    if (descriptor) {
        fcntl(descriptor.get(), F_SETFD, FD_CLOEXEC);
    }
    return descriptor;
#endif
}

}  // namespace velora_com::qel::network
