// The record of a shared/exclusive lock and what queues in it. docs/locking.md draws the transitions.
//
// Every field below the spin word is read and written only while the spin word is held. The exceptions are a
// waiter's own thread, which fills its record before it is queued; its flag, which it also watches; and the holds,
// which a thread watches that is about to queue.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "locks/spin_word.h"
#include "vlrcomn/linked_list.h"
#include "vlrcomn/se_lock.h"

namespace velora_com::qel::locks {

// What a lock's last_transition tells.
enum Transition : uint32_t {
    created = 1,
    exclusive_granted = 2,
    downgraded = 3,
    released_to_free = 4,
    handed_to_writer = 5,
    granted_by_notify = 6,
};

}  // namespace velora_com::qel::locks

// Free: count 0, no owner. Exclusive: an owner, and its depth as the count. Shared: no owner, and the
// number of holds as the count.
struct orSELock {
    velora_com::qel::locks::SpinWord spin;
    // Identity of the exclusive owner, or ORSO_NO_THREAD.
    uintptr_t owner VLRCOMN_GUARDED_BY(spin);
    // Holds.
    std::atomic<int32_t> count VLRCOMN_GUARDED_BY(spin);
    // Waiter records for shared access, latest first.
    orLLItem* shared_waiters VLRCOMN_GUARDED_BY(spin);
    // Waiter records for exclusive access, latest first.
    orLLItem* writers VLRCOMN_GUARDED_BY(spin);
    // Notification records, latest first.
    orLLItem* notifications VLRCOMN_GUARDED_BY(spin);
    // Process of the latest exclusive grant.
    uint32_t owner_process VLRCOMN_GUARDED_BY(spin);
    // A velora_com::qel::locks::Transition.
    uint32_t last_transition VLRCOMN_GUARDED_BY(spin);
};

static_assert(sizeof(void*) != 4 || sizeof(orSELock) == 32, "eight words on a 32-bit host");
static_assert(sizeof(orSELock) <= 64, "one cache line");

namespace velora_com::qel::locks {

inline int32_t holds_of(const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return lock.count.load(std::memory_order_relaxed);
}

inline void set_holds(orSELock& lock, int32_t holds) VLRCOMN_REQUIRES(lock.spin) {
    lock.count.store(holds, std::memory_order_relaxed);
}

inline void add_hold(orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    set_holds(lock, holds_of(lock) + 1);
}

// A waiting thread. It lives on that thread's stack; whoever lets the thread in may touch it only until
// the spin word is given back.
struct Waiter : orLLItem {
    uintptr_t thread;  // its identity, which is the event that wakes it
    uint32_t process;
    std::atomic<int32_t> waiting;  // 1 until the lock is the thread's
};

}  // namespace velora_com::qel::locks
