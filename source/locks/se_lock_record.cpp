// Making and freeing a shared/exclusive lock.
#include "locks/se_lock_record.h"

#include <cstdlib>
#include <new>

#include "locks/notification.h"
#include "support/config.h"

namespace {

// A record that lies across two cache lines makes an uncontended pair about a tenth slower.
void* allocate_record() {
#if defined(VLRCOMN_HAVE_POSIX_MEMALIGN)
    constexpr size_t cache_line = 64;
    void* memory = nullptr;
    return posix_memalign(&memory, cache_line, sizeof(orSELock)) == 0 ? memory : nullptr;
#else
    return std::malloc(sizeof(orSELock));
#endif
}

}  // namespace

extern "C" {

// Neither is analysed: nobody else knows the record yet, or any more.

uint32_t orSO_SELockCreate(orSELock** lock) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (lock == nullptr) {
        return ORU_FAILURE;
    }
    *lock = nullptr;
    void* const memory = allocate_record();
    if (memory == nullptr) {
        return ORU_FAILURE;
    }
    auto* const fresh = new (memory) orSELock{};  // zeros
    fresh->owner = ORSO_NO_THREAD;
    fresh->last_transition = velora_com::qel::locks::Transition::created;
    orLL_Init(&fresh->shared_waiters);
    orLL_Init(&fresh->writers);
    orLL_Init(&fresh->notifications);
    *lock = fresh;
    return ORU_SUCCESS;
}

void orSO_Release(orSELock* lock) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (lock == nullptr) {
        return;
    }
    velora_com::qel::locks::drop_notifications(lock->notifications);
    std::free(lock);
}

}  // extern "C"
