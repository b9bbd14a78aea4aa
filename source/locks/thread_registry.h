// State of the thread registry.
#pragma once

#include <atomic>
#include <cstdint>

#include "sync/tls_index.h"
#include "vlrcomn/se_lock.h"

// The thread-local index that holds each attached thread's event; -1 while the registry is not set up. It is
// the kept one of sync/tls_index.h, which tells when a freed index is the registry's no more.
// Atomic, since other threads may read it while the process attaches again.
extern std::atomic<int32_t> orSO_tls_index;

namespace velora_com::qel::locks {

// The calling thread's identity, or ORSO_NO_THREAD.
inline uintptr_t identity() {
    void* const value = sync::kept_value();
    return value == nullptr ? ORSO_NO_THREAD : reinterpret_cast<uintptr_t>(value);
}

}  // namespace velora_com::qel::locks
