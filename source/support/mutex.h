// A POSIX mutex that clang's analysis knows as a lock.
#pragma once

#include <pthread.h>

#include <type_traits>

#include "support/thread_annotations.h"

namespace velora_com::qel::support {

// Ready from the start, as a static object before any constructor has run, and never destroyed by itself: a
// thread may still use it while the process ends.
class VLRCOMN_CAPABILITY("mutex") Mutex {
public:
    constexpr Mutex() noexcept = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    // False when the system refuses.
    bool lock() noexcept VLRCOMN_TRY_ACQUIRE(true) { return pthread_mutex_lock(&native_) == 0; }
    bool try_lock() noexcept VLRCOMN_TRY_ACQUIRE(true) {
        return pthread_mutex_trylock(&native_) == 0;
    }
    bool unlock() noexcept VLRCOMN_RELEASE() { return pthread_mutex_unlock(&native_) == 0; }

    // For the calls that want a POSIX mutex: to wait for a condition, to make and to destroy.
    pthread_mutex_t* native() noexcept { return &native_; }

private:
    pthread_mutex_t native_ = PTHREAD_MUTEX_INITIALIZER;
};

static_assert(sizeof(Mutex) == sizeof(pthread_mutex_t) && std::is_trivially_destructible_v<Mutex>);

}  // namespace velora_com::qel::support
