// State of the thread registry.
#pragma once

#include <atomic>
#include <cstdint>

// The thread-local index that holds each attached thread's event; -1 while the registry is not set up.
// Atomic, since a process that attaches anew may do so under the eyes of its other threads.
extern std::atomic<int32_t> orSO_tls_index;
