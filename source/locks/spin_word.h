// The spin word as the library's own locks use it.
#pragma once

#include <cstdint>

#include "support/thread_annotations.h"

namespace velora_com::qel::locks {

constexpr int32_t spin_free = 0;
constexpr int32_t spin_held = 1;

// One exchange, as that of oruInterlockedExchange, which may be used on the same word.
inline bool try_to_take_spin(volatile int32_t& spin) {
    return __atomic_exchange_n(&spin, spin_held, __ATOMIC_ACQUIRE) == spin_free;
}

// How many microseconds a thread sleeps between a failed try, counted from 1, and the next one.
constexpr int32_t no_sleep = -1;
int32_t sleep_after(unsigned failed_tries);

// Goes on after a first try that failed.
void take_contended_spin(volatile int32_t& spin);

// Taking a free word costs one exchange and nothing else.
inline void take_spin(volatile int32_t& spin) {
    if (!try_to_take_spin(spin)) {
        take_contended_spin(spin);
    }
}

// The exchange whose old value nobody asks for: an atomic store, which holds up nothing that came before it.
// An exchange here makes an uncontended pair of the lock half as long again.
inline void release_spin(volatile int32_t& spin) {
    __atomic_store_n(&spin, spin_free, __ATOMIC_RELEASE);
}

// A spin word that clang's analysis knows as a lock. Without constructors: memory of zeros is a free one.
struct VLRCOMN_CAPABILITY("spin word") SpinWord {
    volatile int32_t word;

    void lock() VLRCOMN_ACQUIRE() { take_spin(word); }
    void lock_contended() VLRCOMN_ACQUIRE() { take_contended_spin(word); }
    bool try_lock() VLRCOMN_TRY_ACQUIRE(true) { return try_to_take_spin(word); }
    void unlock() VLRCOMN_RELEASE() { release_spin(word); }
};

// Holds a spin word while it lives. The scope must not contain a cancellation point: where the system
// runs no destructors for a cancelled thread the word would stay held for ever.
class VLRCOMN_SCOPED_CAPABILITY SpinGuard {
public:
    struct Held {};

    explicit SpinGuard(SpinWord& spin) VLRCOMN_ACQUIRE(spin) : spin_(spin) { spin.lock(); }
    // For a word that the thread holds already.
    SpinGuard(SpinWord& spin, Held) VLRCOMN_REQUIRES(spin) : spin_(spin) {}
    ~SpinGuard() VLRCOMN_RELEASE() { spin_.unlock(); }
    SpinGuard(const SpinGuard&) = delete;
    SpinGuard& operator=(const SpinGuard&) = delete;

private:
    SpinWord& spin_;
};

}  // namespace velora_com::qel::locks
