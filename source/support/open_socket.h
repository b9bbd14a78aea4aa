#pragma once

#include "support/owners.h"

namespace velora_com::qel::support {

// A new socket, closed on exec; empty with errno set when the system gives none.
FileDescriptor open_socket(int family, int type, int protocol);

}  // namespace velora_com::qel::support
