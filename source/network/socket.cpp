#include "network/socket.h"

#include <sys/socket.h>

#include "support/config.h"
#include "support/open_file.h"

namespace velora_com::qel::network {

support::FileDescriptor open_socket(int family, int type, int protocol) {
#ifdef VLRCOMN_HAVE_SOCK_CLOEXEC
    return support::FileDescriptor(socket(family, type | SOCK_CLOEXEC, protocol));
#else
    support::FileDescriptor descriptor(socket(family, type, protocol));
    support::close_on_exec(descriptor.get());
    return descriptor;
#endif
}

}  // namespace velora_com::qel::network
