#include "locks/se_lock_wait.h"

#include <pthread.h>

#include "locks/spin_word.h"
#include "locks/thread_registry.h"
#include "support/process_id.h"
#include "support/watch.h"
#include "sync/wait.h"
#include "vlrcomn/sync.h"

namespace velora_com::qel::locks {
namespace {

oruHandle event_of(const Waiter& waiter) {
    return reinterpret_cast<oruHandle>(waiter.thread);
}

// What a cancelled waiter leaves behind.
struct Departure {
    orSELock& lock;
    orLLItem*& queue;
    Waiter& waiter;
};

// Takes the waiter out of its queue.
void unlink(orLLItem*& queue, Waiter& waiter) {
    orLLItem** link = &queue;
    while (*link != &waiter) {
        link = &(*link)->next;
    }
    orLL_XRemove(link, &waiter);
}

// Without the spin word only a hint.
bool is_let_in(const Waiter& waiter) {
    return waiter.waiting.load(std::memory_order_relaxed) == 0;
}

// Looks whether the waiter has been let in. Under the spin word, since who lets it in works under it
// too: flag and event are then both done with or both untouched, the waiter's record and event may go
// as soon as the spin word is given back, and resetting the event here cannot wipe out a later grant.
bool take_grant(Waiter& waiter) {
    oruResetEvent(event_of(waiter));
    return is_let_in(waiter);
}

// A writer that leaves its queue may have been the last that kept readers waiting.
void admit_readers(orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    if (lock.writers == nullptr && lock.owner == ORSO_NO_THREAD) {
        grant_to_shared_waiters(lock);
    }
}

// Runs for a thread that is cancelled in wait_for_grant. Nothing cancels a thread that ends; systems that look
// for a cancellation whenever it is allowed again would begin this end anew, so that it stays forbidden.
void leave_cancelled(void* argument) {
    const Departure& departure = *static_cast<Departure*>(argument);
    int ignored;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &ignored);
    bool granted;
    {
        const SpinGuard guard(departure.lock.spin);
        granted = take_grant(departure.waiter);
        if (!granted) {
            unlink(departure.queue, departure.waiter);
            admit_readers(departure.lock);
        }
    }
    if (granted) {
        orSO_SELockRelease(&departure.lock);
    }
}

// Fills the record of the calling thread and queues it, under the spin word; false when it cannot wait.
bool enqueue(orLLItem*& queue, Waiter& waiter, int wait) {
    if (!can_wait(identity(), wait)) {
        return false;
    }
    waiter.thread = identity();
    waiter.process = support::process_id();
    waiter.waiting.store(1, std::memory_order_relaxed);
    orLL_XInsertHead(&queue, &waiter);
    return true;
}

// Called without the spin word.
void wait_for_grant(orSELock& lock, orLLItem*& queue, Waiter& waiter) {
    Departure departure{lock, queue, waiter};
    bool granted = false;
    // A POSIX handler, not a destructor: the home system cancels a thread without unwinding its stack.
    pthread_cleanup_push(leave_cancelled, &departure);
    while (!granted) {
        // As oruWaitForSingleObject, but for the flag instead of the event, which comes later. The results do
        // not matter: only the flag under the spin word tells a grant from a spurious wake-up.
        if (!support::watch([&waiter] { return is_let_in(waiter); })) {
            sync::wait_asleep(event_of(waiter), ORU_INFINITE);
        }
        const SpinGuard guard(lock.spin);
        granted = take_grant(waiter);
    }
    pthread_cleanup_pop(0);
}

}  // namespace

int wait_in_queue(orSELock& lock, orLLItem*& queue, int wait) {
    Waiter waiter;
    {
        const SpinGuard guard(lock.spin, SpinGuard::Held());
        if (!enqueue(queue, waiter, wait)) {
            return 0;
        }
    }
    wait_for_grant(lock, queue, waiter);
    return 1;
}

void grant_to_shared_waiters(orSELock& lock) {
    while (!orLL_IsEmpty(&lock.shared_waiters)) {
        add_hold(lock);
        wake_first(lock.shared_waiters);
    }
}

void wake_first(orLLItem*& queue) {
    auto& waiter = *static_cast<Waiter*>(orLL_XRemoveHead(&queue));
    waiter.waiting.store(0, std::memory_order_relaxed);
    oruSetEvent(event_of(waiter));
}

}  // namespace velora_com::qel::locks
