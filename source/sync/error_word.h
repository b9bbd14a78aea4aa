// The portability layer's own error word, apart from the C library's errno.
#pragma once

#include <atomic>
#include <cerrno>
#include <cstdint>

namespace velora_com::qel::sync {

// The reason of the last refusal: EINVAL, ENOMEM, EAGAIN or EBUSY as the C library numbers them.
// Written by any thread, read by nothing in the library.
extern std::atomic<uint32_t> nErrno;

inline void note_error(int code) noexcept {
    nErrno.store(static_cast<uint32_t>(code), std::memory_order_relaxed);
}

}  // namespace velora_com::qel::sync
