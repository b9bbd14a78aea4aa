#include "portability/thread_end.h"

#include "support/owners.h"

namespace velora_com::qel::portability {

SignalWord bDummyThreadSignalled{0};

namespace {

// A waiter may see the 1 and close the handle before the ending thread has broadcast; this lock
// makes such a closing wait until the ending thread is done with the record. Always taken before a
// record's mutex, never inside one.
pthread_mutex_t end_or_close = PTHREAD_MUTEX_INITIALIZER;

}  // namespace

void signal_thread_end(const StartBlock& block) noexcept {
    const support::MutexGuard lock(end_or_close);
    if (block.signal == &bDummyThreadSignalled) {
        return;
    }
    // Stored before the lock, by contract. No waiter misses it: one that still read 0 holds the
    // mutex until it sleeps, and is then woken.
    block.signal->store(1, std::memory_order_release);
    {
        const support::MutexGuard record_lock(*block.mutex);
        pthread_cond_broadcast(block.cond);
    }
    block.handle->ppThreadSignalled = nullptr;
}

void redirect_thread_signal(_oruHandleObject_t& record) noexcept {
    const support::MutexGuard lock(end_or_close);
    // The block lives as long as the record points to it. bSignalled would not tell: it is stored
    // before the ending thread has finished with the record.
    if (record.ppThreadSignalled != nullptr) {
        *record.ppThreadSignalled = &bDummyThreadSignalled;
    }
}

}  // namespace velora_com::qel::portability
