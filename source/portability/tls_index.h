// The tables behind the thread-local indices.
#pragma once

#include <atomic>
#include <cstdint>

#include "vlrcomn/thread.h"

namespace velora_com::qel::portability {

// The index's POSIX key plus 1, or 0 when the index is free. A word instead of a heap cell with the
// key: readers take no lock, and a word is never freed under them.
extern std::atomic<uintptr_t> pTlsKeyTable[ORU_TLS_INDICES];

// The process that allocated each index, or 0 when it is free. Guarded by the lock of
// tls_index.cpp.
extern uint32_t nTlsOwnerTable[ORU_TLS_INDICES];

// Frees every index that this process allocated.
void free_tls_indices_of_process() noexcept;

}  // namespace velora_com::qel::portability
