// Taking and releasing a shared/exclusive lock.
//
// docs/model/se_lock.pml is a model of this file and of se_lock_wait.cpp with the same function names;
// a change here is a change there.
#include "vlrcomn/se_lock.h"

#include <optional>

#include "lists/notification.h"
#include "lists/process_id.h"
#include "lists/se_lock_record.h"
#include "lists/se_lock_wait.h"
#include "lists/spin_word.h"
#include "lists/thread_registry.h"
#include "support/owners.h"

namespace {

using namespace velora_com::qel::lists;
using velora_com::qel::support::CancellationOff;

// A thread without identity owns nothing, although a lock without owner holds the same value.
bool owned_by_me(const orSELock& lock) {
    return lock.owner != ORSO_NO_THREAD && lock.owner == identity();
}

bool may_take_exclusive(const orSELock& lock) {
    return lock.count == 0 || owned_by_me(lock);
}

bool may_share_past_writers(const orSELock& lock) {
    return lock.owner == ORSO_NO_THREAD || owned_by_me(lock);
}

bool may_share_behind_writers(const orSELock& lock) {
    return lock.count == 0 || owned_by_me(lock) ||
           (lock.owner == ORSO_NO_THREAD && lock.writers == nullptr);
}

void grant_exclusive(orSELock& lock, Transition transition) {
    ++lock.count;
    if (lock.owner == ORSO_NO_THREAD) {
        lock.owner = identity();
        lock.last_transition = transition;
    }
    lock.owner_process = process_id();
}

// The common part of the two shared modes; `may_share` is the mode.
template <typename MayShare>
int take_shared(orSELock* lock, int wait, MayShare may_share) {
    if (lock == nullptr) {
        return 0;
    }
    SpinGuard guard(lock->spin);
    if (may_share(*lock)) {
        ++lock->count;
        return 1;
    }
    guard.pass_on();
    return wait_in_queue(*lock, lock->shared_waiters, wait);
}

void grant_to_shared_waiters(orSELock& lock) {
    while (!orLL_IsEmpty(&lock.shared_waiters)) {
        ++lock.count;
        wake_first(lock.shared_waiters);
    }
}

void grant_to_latest_writer(orSELock& lock) {
    const Waiter& latest = *static_cast<Waiter*>(lock.writers);
    lock.count = 1;
    lock.owner = latest.thread;
    lock.owner_process = latest.process;
    lock.last_transition = Transition::handed_to_writer;
    wake_first(lock.writers);
}

}  // namespace

extern "C" {

int orSO_SELock(orSELock* lock, int exclusive, int wait) {
    return exclusive == 1 ? orSO_SELockExclusive(lock, wait)
                          : orSO_SELockSharedWaitForExclusive(lock, wait);
}

int orSO_SELockExclusive(orSELock* lock, int wait) {
    if (lock == nullptr) {
        return 0;
    }
    SpinGuard guard(lock->spin);
    if (may_take_exclusive(*lock)) {
        grant_exclusive(*lock, Transition::exclusive_granted);
        return 1;
    }
    guard.pass_on();
    return wait_in_queue(*lock, lock->writers, wait);
}

int orSO_SELockSharedStarveExclusive(orSELock* lock, int wait) {
    return take_shared(lock, wait, may_share_past_writers);
}

int orSO_SELockSharedWaitForExclusive(orSELock* lock, int wait) {
    return take_shared(lock, wait, may_share_behind_writers);
}

int orSO_SELockExclusiveNotify(orSELock* lock, orSO_NotifyCallback callback, uintptr_t first,
                               uintptr_t second) {
    if (lock == nullptr) {
        return 0;
    }
    const SpinGuard guard(lock->spin);
    if (may_take_exclusive(*lock)) {
        grant_exclusive(*lock, Transition::granted_by_notify);
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
    const SpinGuard guard(lock->spin);
    lock->owner = ORSO_NO_THREAD;
    lock->last_transition = Transition::downgraded;
    grant_to_shared_waiters(*lock);
}

void orSO_SELockRelease(orSELock* lock) {
    if (lock == nullptr) {
        return;
    }
    std::optional<CancellationOff> uncancelled;  // ends after the guard
    const SpinGuard guard(lock->spin);
    if (--lock->count != 0) {
        return;
    }
    lock->owner = ORSO_NO_THREAD;
    lock->last_transition = Transition::released_to_free;
    if (lock->writers != nullptr) {
        grant_to_latest_writer(*lock);
    } else if (lock->shared_waiters != nullptr) {
        grant_to_shared_waiters(*lock);
    } else if (lock->notifications != nullptr) {
        uncancelled.emplace();
        notify_free(lock->notifications);
    }
}

}  // extern "C"
