// Taking and releasing a shared/exclusive lock.
//
// docs/model/se_lock.pml is a model of this file and of se_lock_wait.cpp with the same function names;
// a change here is a change there.
#include "vlrcomn/se_lock.h"

#include "locks/notification.h"
#include "locks/se_lock_record.h"
#include "locks/se_lock_wait.h"
#include "locks/spin_word.h"
#include "locks/thread_registry.h"
#include "support/owners.h"
#include "support/process_id.h"
#include "support/watch.h"

namespace {

using namespace velora_com::qel::locks;
using velora_com::qel::support::CancellationOff;
using velora_com::qel::support::has_several_processors;
using velora_com::qel::support::looks_pay;
using velora_com::qel::support::pause_between_looks;
using velora_com::qel::support::process_id;
using velora_com::qel::support::watch_looks;

// A thread without identity owns nothing, although a lock without owner holds the same value.
bool owned_by(uintptr_t me, const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return lock.owner != ORSO_NO_THREAD && lock.owner == me;
}

bool may_take_exclusive(uintptr_t me, const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return holds_of(lock) == 0 || owned_by(me, lock);
}

bool may_share_past_writers(uintptr_t me, const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return lock.owner == ORSO_NO_THREAD || owned_by(me, lock);
}

bool may_share_behind_writers(uintptr_t me, const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return holds_of(lock) == 0 || owned_by(me, lock) ||
           (lock.owner == ORSO_NO_THREAD && lock.writers == nullptr);
}

void grant_exclusive(uintptr_t me, orSELock& lock, Transition transition)
    VLRCOMN_REQUIRES(lock.spin) {
    add_hold(lock);
    if (lock.owner == ORSO_NO_THREAD) {
        lock.owner = me;
        lock.last_transition = transition;
    }
    lock.owner_process = process_id();
}

// Below, what a free lock under a free spin word needs stands in the exported function itself, and all else
// in functions apart from it: a free lock is then taken without saving registers, a tenth faster.

// The analysis does not follow a spin word that is handed over under a condition. Who hands it over is not
// analysed; here it counts as taken, and all that follows is analysed.

// Takes the spin word unless the caller has done so already.
void take_over_spin(orSELock& lock, bool held)
    VLRCOMN_ACQUIRE(lock.spin) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (!held) {
        lock.spin.lock_contended();
    }
}

// Without the spin word only a hint.
bool looks_held(const orSELock& lock) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    return lock.count.load(std::memory_order_relaxed) != 0;
}

using MayTake = bool(uintptr_t me, const orSELock& lock);

// Decides, for a thread that would wait at last after a moment of looking. Most holds are short: what falls
// free within that moment costs neither side a hand-over, several times as long as an uncontended pair. It does
// not look where waiters' looks have been in vain.
template <MayTake may_take>
bool may_take_soon(uintptr_t me, orSELock& lock, int wait) VLRCOMN_REQUIRES(lock.spin) {
    const bool may_pay = can_wait(me, wait) && has_several_processors() && looks_pay();
    int looks = may_pay ? watch_looks : 0;
    while (!may_take(me, lock)) {
        if (looks == 0) {
            return false;
        }
        lock.spin.unlock();
        do {
            pause_between_looks();
            --looks;
        } while (looks > 0 && looks_held(lock));
        lock.spin.lock();
    }
    return true;
}

// The common part of the two shared modes; `may_share` is the mode.
template <MayTake may_share>
[[gnu::noinline]] int take_shared_slowly(orSELock& lock, int wait, bool has_spin) {
    take_over_spin(lock, has_spin);
    if (may_take_soon<may_share>(identity(), lock, wait)) {
        add_hold(lock);
        lock.spin.unlock();
        return 1;
    }
    return wait_in_queue(lock, lock.shared_waiters, wait);
}

template <MayTake may_share>
int take_shared(orSELock* lock, int wait) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (lock == nullptr) {
        return 0;
    }
    const bool has_spin = lock->spin.try_lock();
    if (!has_spin || holds_of(*lock) != 0) {
        return take_shared_slowly<may_share>(*lock, wait, has_spin);
    }
    set_holds(*lock, 1);
    lock->spin.unlock();
    return 1;
}

[[gnu::noinline]] int take_exclusive_slowly(uintptr_t me, orSELock& lock, int wait, bool has_spin) {
    take_over_spin(lock, has_spin);
    if (may_take_soon<may_take_exclusive>(me, lock, wait)) {
        grant_exclusive(me, lock, Transition::exclusive_granted);
        lock.spin.unlock();
        return 1;
    }
    return wait_in_queue(lock, lock.writers, wait);
}

void grant_to_latest_writer(orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    const Waiter& latest = *static_cast<Waiter*>(lock.writers);
    set_holds(lock, 1);
    lock.owner = latest.thread;
    lock.owner_process = latest.process;
    lock.last_transition = Transition::handed_to_writer;
    wake_first(lock.writers);
}

// Gives one hold back. Returns whether it was the last.
bool drop_hold(orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    set_holds(lock, holds_of(lock) - 1);
    if (holds_of(lock) != 0) {
        return false;
    }
    lock.owner = ORSO_NO_THREAD;
    lock.last_transition = Transition::released_to_free;
    return true;
}

// Whether anybody waits for the lock or for news of it.
bool is_wanted(const orSELock& lock) VLRCOMN_REQUIRES(lock.spin) {
    return lock.writers != nullptr || lock.shared_waiters != nullptr ||
           lock.notifications != nullptr;
}

// A thread that were cancelled in here could not tell whether it still holds the lock.
[[gnu::noinline]] void release_slowly(orSELock& lock, bool has_spin) {
    const CancellationOff uncancelled;  // ends after the guard
    take_over_spin(lock, has_spin);
    const SpinGuard guard(lock.spin, SpinGuard::Held());
    if (!drop_hold(lock)) {
        return;
    }
    if (lock.writers != nullptr) {
        grant_to_latest_writer(lock);
    } else if (lock.shared_waiters != nullptr) {
        grant_to_shared_waiters(lock);
    } else {
        notify_free(lock.notifications);
    }
}

}  // namespace

extern "C" {

int orSO_SELock(orSELock* lock, int exclusive, int wait) {
    return exclusive == 1 ? orSO_SELockExclusive(lock, wait)
                          : orSO_SELockSharedWaitForExclusive(lock, wait);
}

int orSO_SELockExclusive(orSELock* lock, int wait) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (lock == nullptr) {
        return 0;
    }
    const uintptr_t me = identity();
    const bool has_spin = lock->spin.try_lock();
    if (!has_spin || holds_of(*lock) != 0) {
        return take_exclusive_slowly(me, *lock, wait, has_spin);
    }
    grant_exclusive(me, *lock, Transition::exclusive_granted);
    lock->spin.unlock();
    return 1;
}

int orSO_SELockSharedStarveExclusive(orSELock* lock, int wait) {
    return take_shared<may_share_past_writers>(lock, wait);
}

int orSO_SELockSharedWaitForExclusive(orSELock* lock, int wait) {
    return take_shared<may_share_behind_writers>(lock, wait);
}

int orSO_SELockExclusiveNotify(orSELock* lock, orSO_NotifyCallback callback, uintptr_t first,
                               uintptr_t second) {
    if (lock == nullptr) {
        return 0;
    }
    const uintptr_t me = identity();
    const SpinGuard guard(lock->spin);
    if (may_take_exclusive(me, *lock)) {
        grant_exclusive(me, *lock, Transition::granted_by_notify);
        return 1;
    }
    if (callback != nullptr) {
        register_notification(lock->notifications, callback, first, second);
    }
    return 0;
}

int orSO_SELockExclusiveUnnotify(orSELock* lock, orSO_NotifyCallback callback, uintptr_t first,
                                 uintptr_t second) {
    if (lock == nullptr) {
        return 0;
    }
    const CancellationOff uncancelled;  // ends after the guard
    const SpinGuard guard(lock->spin);
    return withdraw_notification(lock->notifications, callback, first, second);
}

void orSO_SELockExclusiveToShared(orSELock* lock) {
    if (lock == nullptr) {
        return;
    }
    const CancellationOff uncancelled;
    const SpinGuard guard(lock->spin);
    lock->owner = ORSO_NO_THREAD;
    lock->last_transition = Transition::downgraded;
    grant_to_shared_waiters(*lock);
}

void orSO_SELockRelease(orSELock* lock) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (lock == nullptr) {
        return;
    }
    const bool has_spin = lock->spin.try_lock();
    if (!has_spin || is_wanted(*lock)) {
        release_slowly(*lock, has_spin);
        return;
    }
    drop_hold(*lock);
    lock->spin.unlock();
}

}  // extern "C"
