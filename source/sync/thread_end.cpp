#include "sync/thread_end.h"

#include "support/owners.h"

namespace velora_com::qel::sync {

SignalWord bDummyThreadSignalled{0};

namespace {

// A waiter may see the 1 and close the handle before the ending thread has broadcast. Under this lock
// a closing either redirects an end that has not begun, or learns that the ending thread has got hold
// of the record's mutex and will touch the record no more once it gives that back. Always taken before
// a record's mutex, never inside one, and released before anyone is woken, so that a woken thread does not
// wait for it. ppThreadSignalled bears no annotation: it is filled without the lock before the thread starts,
// and the cell that it names lies in the thread's own block.
support::Mutex end_or_close;

}  // namespace

void signal_thread_end(const StartBlock& block) noexcept {
    support::MutexGuard lock(end_or_close);
    if (block.signal == &bDummyThreadSignalled) {
        return;
    }
    // Stored before the lock, so that the end shows also when the lock fails. No waiter misses it: one that
    // still read 0 holds the mutex until it sleeps, and is then woken.
    block.signal->store(1, std::memory_order_release);
    const support::MutexGuard record_lock(*block.mutex);
    block.handle->ppThreadSignalled = nullptr;
    lock.unlock();
    pthread_cond_broadcast(block.cond);
}

void part_from_thread(_oruHandleObject_t& record) noexcept {
    {
        const support::MutexGuard lock(end_or_close);
        // bSignalled would not tell: it is stored before the ending thread has finished.
        if (record.ppThreadSignalled != nullptr) {
            *record.ppThreadSignalled = &bDummyThreadSignalled;
            return;
        }
    }
    // The ending thread may still hold the mutex; nothing of it is left in the record afterwards.
    const support::MutexGuard ended(record.mutex);
}

}  // namespace velora_com::qel::sync
