#include "support/open_socket.h"

#include <sys/socket.h>

#include "support/config.h"
#include "support/open_file.h"

namespace velora_com::qel::support {

FileDescriptor open_socket(int family, int type, int protocol) {
#ifdef VLRCOMN_HAVE_SOCK_CLOEXEC
    return FileDescriptor(socket(family, type | SOCK_CLOEXEC, protocol));
#else
    FileDescriptor descriptor(socket(family, type, protocol));
    close_on_exec(descriptor.get());
    return descriptor;
#endif
}

}  // namespace velora_com::qel::support
