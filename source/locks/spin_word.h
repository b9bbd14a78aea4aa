// The spin word as the library's own locks use it.
#pragma once

#include <cstdint>

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

// Holds a spin word while it lives. The scope must not contain a cancellation point: where the system
// runs no destructors for a cancelled thread the word would stay held for ever.
class SpinGuard {
public:
    struct Held {};

    explicit SpinGuard(volatile int32_t& spin) : spin_(&spin) { take_spin(spin); }
    // For a word that another guard has passed on.
    SpinGuard(volatile int32_t& spin, Held) : spin_(&spin) {}
    ~SpinGuard() {
        if (spin_ != nullptr) {
            release_spin(*spin_);
        }
    }
    SpinGuard(const SpinGuard&) = delete;
    SpinGuard& operator=(const SpinGuard&) = delete;

    // Leaves the word held, for another guard to give back.
    void pass_on() { spin_ = nullptr; }

private:
    volatile int32_t* spin_;
};

}  // namespace velora_com::qel::locks
