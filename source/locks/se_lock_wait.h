// How a thread waits for a shared/exclusive lock and how another one lets it in.
#pragma once

#include <cstdint>

#include "locks/se_lock_record.h"

namespace velora_com::qel::locks {

// Whether a request may end in a queue: a thread that is not attached has no event that could wake it.
inline bool can_wait(uintptr_t me, int wait) {
    return wait == 1 && me != ORSO_NO_THREAD;
}

// Called with the spin word held, which it gives back. Puts the calling thread at the head of a queue and
// waits until it has been let in: 1. It is 0 at once when the thread does not want to wait or cannot. Only
// cancellation ends the sleep otherwise: the thread is then no longer queued and holds nothing. Apart from its
// callers, which take a free lock the faster for it.
[[gnu::noinline]] int wait_in_queue(orSELock& lock, orLLItem*& queue, int wait)
    VLRCOMN_RELEASE(lock.spin);

// Takes the first waiter out of a queue and wakes it; the lock's fields already name it as a holder.
// Under the spin word.
void wake_first(orLLItem*& queue);

// Makes every queued reader a holder. Of a lock without owner.
void grant_to_shared_waiters(orSELock& lock) VLRCOMN_REQUIRES(lock.spin);

}  // namespace velora_com::qel::locks
