#include "support/open_file.h"

#include <fcntl.h>

#include "support/config.h"

namespace velora_com::qel::support {

void close_on_exec(int descriptor) {
    if (descriptor >= 0) {
        // A cancellation point on some systems, where cancelling runs no owner's destructor.
        const CancellationOff cancellation_off;
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
}

FileDescriptor open_file(const char* name, int flags, mode_t mode) {
#if defined(VLRCOMN_HAVE_O_CLOEXEC)
    return FileDescriptor(::open(name, flags | O_CLOEXEC, mode));
#else
    FileDescriptor file(::open(name, flags, mode));
    close_on_exec(file.get());
    return file;
#endif
}

}  // namespace velora_com::qel::support
