// State of the thread registry.
#pragma once

#include <atomic>
#include <cstdint>

#include "vlrcomn/se_lock.h"
#include "vlrcomn/thread.h"

// The thread-local index that holds each attached thread's event; -1 while the registry is not set up.
// Atomic, since a process that attaches anew may do so under the eyes of its other threads.
extern std::atomic<int32_t> orSO_tls_index;

namespace velora_com::qel::lists {

inline uint32_t registry_index() {
    return static_cast<uint32_t>(orSO_tls_index.load(std::memory_order_acquire));
}

// The calling thread's identity, or ORSO_NO_THREAD.
inline uintptr_t identity() {
    void* const value = oruTlsGetValue(registry_index());
    return value == nullptr ? ORSO_NO_THREAD : reinterpret_cast<uintptr_t>(value);
}

}  // namespace velora_com::qel::lists
