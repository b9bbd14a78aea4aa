// Opens a file whose descriptor stays with this program: it is closed on exec.
#pragma once

#include <sys/types.h>

#include "support/owners.h"

namespace velora_com::qel::support {

// Has `descriptor`, if any, closed on exec, where the call that made it could not ask for that.
void close_on_exec(int descriptor);

// open(2), interrupted calls not repeated. Empty with errno set on failure.
FileDescriptor open_file(const char* name, int flags, mode_t mode = 0);

}  // namespace velora_com::qel::support
