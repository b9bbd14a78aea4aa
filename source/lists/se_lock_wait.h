// How a thread waits for a shared/exclusive lock and how another one lets it in.
#pragma once

#include <cstdint>

#include "lists/se_lock_record.h"

namespace velora_com::qel::lists {

// Tells whether a thread that is not let in now goes on to wait. Without an event it could not be woken.
inline bool may_wait(int wait, uintptr_t me) {
    return wait == 1 && me != ORSO_NO_THREAD;
}

// Puts the calling thread at the head of a queue. Under the spin word.
void enqueue(orLLItem*& queue, Waiter& waiter, uintptr_t me);

// Sleeps until the waiter has been let in. Called without the spin word. Only cancellation ends it
// otherwise: the waiter is then no longer queued and holds nothing.
void wait_for_grant(orSELock& lock, orLLItem*& queue, Waiter& waiter);

// Takes the first waiter out of a queue and wakes it; the lock's fields already name it as a holder.
// Under the spin word.
void wake_first(orLLItem*& queue);

}  // namespace velora_com::qel::lists
