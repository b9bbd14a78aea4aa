// The process id.
#pragma once

#include <atomic>
#include <cstdint>

namespace velora_com::qel::support {

constexpr uint32_t unknown_process = 0;  // no process that runs this code has the id 0

// What the system last said; forgotten in a forked child.
extern std::atomic<uint32_t> cached_process_id;

uint32_t ask_process_id();

// Same as getpid, also in a forked child, but asks the system once per process: a lock's
// grant must not cost a system call.
inline uint32_t process_id() {
    const uint32_t known = cached_process_id.load(std::memory_order_relaxed);
    return known != unknown_process ? known : ask_process_id();
}

}  // namespace velora_com::qel::support
