// The process id for the records of the locks.
#pragma once

#include <cstdint>

namespace velora_com::qel::lists {

// Same as getpid, also in a forked child, but asks the system once per process: a grant must not cost a
// system call.
uint32_t process_id();

}  // namespace velora_com::qel::lists
