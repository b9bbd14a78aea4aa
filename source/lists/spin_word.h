// Holding a spin word for a scope.
#pragma once

#include <cstdint>

#include "vlrcomn/se_lock.h"

namespace velora_com::qel::lists {

// Holds a spin word while it lives. The scope must not contain a cancellation point: where the system
// runs no destructors for a cancelled thread the word would stay held for ever.
class SpinGuard {
public:
    explicit SpinGuard(volatile int32_t& spin) : spin_(spin) { orSL_Get(&spin_); }
    ~SpinGuard() { orSL_Release(&spin_); }
    SpinGuard(const SpinGuard&) = delete;
    SpinGuard& operator=(const SpinGuard&) = delete;

private:
    volatile int32_t& spin_;
};

}  // namespace velora_com::qel::lists
