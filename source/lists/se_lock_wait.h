// How a thread waits for a shared/exclusive lock and how another one lets it in.
#pragma once

#include <cstdint>

#include "lists/se_lock_record.h"

namespace velora_com::qel::lists {

// Puts the calling thread at the head of a queue, under the spin word. False when it does not want to
// wait or, not being attached, has no event that could wake it.
bool enqueue(orLLItem*& queue, Waiter& waiter, int wait);

// Sleeps until the waiter has been let in. Called without the spin word. Only cancellation ends it
// otherwise: the waiter is then no longer queued and holds nothing.
void wait_for_grant(orSELock& lock, orLLItem*& queue, Waiter& waiter);

// Takes the first waiter out of a queue and wakes it; the lock's fields already name it as a holder.
// Under the spin word.
void wake_first(orLLItem*& queue);

}  // namespace velora_com::qel::lists
