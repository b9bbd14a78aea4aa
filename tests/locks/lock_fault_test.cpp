// Locks when the system refuses memory, when threads are cancelled, and when the spin word stays held.
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <deque>
#include <thread>
#include <utility>
#include <vector>

#include "lists/se_lock_wait.h"
#include "locks/peers.h"
#include "support/fault_injection.h"
#include "vlrcomn/locked_list.h"

using namespace locks;
using namespace velora_com::qel::lists;

namespace {

// Sees what the calling thread does to one spin word, and frees it at a given try.
struct SpinWatch {
    volatile int32_t* word;
    unsigned free_at;
    unsigned tries = 0;
    std::vector<std::pair<unsigned, useconds_t>> sleeps = {};  // after how many tries, how long
};
thread_local SpinWatch* spin_watch = nullptr;

std::atomic<int> sleepers{0};

}  // namespace

extern "C" {
int __real_usleep(useconds_t microseconds);
int32_t __real_oruInterlockedExchange(volatile int32_t* target, int32_t value);

// Nobody really sleeps.
int __wrap_usleep(useconds_t microseconds) {
    if (spin_watch != nullptr) {
        spin_watch->sleeps.emplace_back(spin_watch->tries, microseconds);
        errno = EINTR;
        return -1;
    }
    ++sleepers;
    return __real_usleep(0);
}

int32_t __wrap_oruInterlockedExchange(volatile int32_t* target, int32_t value) {
    if (spin_watch != nullptr && target == spin_watch->word && value == 1 &&
        ++spin_watch->tries == spin_watch->free_at) {
        __real_oruInterlockedExchange(target, 0);
    }
    return __real_oruInterlockedExchange(target, value);
}
}

namespace {

TEST(SpinWord, BacksOffAsDocumentedAndKeepsErrno) {
    for (const auto& [free_at, sleeps] :
         {std::pair{1u, 0u}, {4000u, 0u}, {4001u, 0u}, {4002u, 1u}, {5000u, 400u}}) {
        SCOPED_TRACE(free_at);
        int32_t spin = 1;
        SpinWatch watch{&spin, free_at};
        spin_watch = &watch;
        errno = EDOM;
        const int32_t result = orSL_Get(&spin);
        const int error = errno;
        spin_watch = nullptr;
        EXPECT_EQ(result, 0);
        EXPECT_EQ(error, EDOM);
        EXPECT_EQ(spin, 1);
        EXPECT_EQ(watch.tries, free_at);
        ASSERT_EQ(watch.sleeps.size(), sleeps);
        for (unsigned i = 0; i < sleeps; ++i) {
            constexpr useconds_t lengths[] = {0, 10000, 100000, 1000000};
            EXPECT_EQ(watch.sleeps[i], (std::pair{4001 + i, lengths[i / 100]}));
        }
        orSL_Release(&spin);
        EXPECT_EQ(spin, 0);
    }
}

using fault_injection::walk_failures;

TEST(LockMemory, EveryRefusalIsAnsweredAndNothingLeaks) {
    orSELock* lock = nullptr;
    const auto create = [&] {
        lock = reinterpret_cast<orSELock*>(1);
        return orSO_SELockCreate(&lock) == ORU_SUCCESS || lock != nullptr;
    };
    EXPECT_GT(walk_failures(create, [&] { orSO_Release(lock); }).calls, 0);
    LinkedListHandle list = nullptr;
    const auto init = [&] { return LinkedList_Init(&list) == 1; };
    EXPECT_GT(walk_failures(init, [&] { LinkedList_End(&list); }).calls, 0);
}

// Closing an event leaves its locks to the system, so only memory is counted.
TEST(LockMemory, AThreadThatCannotAttachHoldsNothing) {
    const Registry registry;
    int refusals = 0;
    for (;; ++refusals) {
        orSO_ThreadDetach();
        const auto before = fault_injection::resources_in_use().allocations;
        fault_injection::FailNth failure(refusals + 1);
        const uintptr_t result = orSO_ThreadAttach();
        failure.disarm();
        if (failure.fired() == nullptr) {
            EXPECT_EQ(result, 1u);
            break;
        }
        EXPECT_EQ(result, 0u) << failure.fired();
        EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
        EXPECT_EQ(fault_injection::resources_in_use().allocations, before) << failure.fired();
    }
    EXPECT_GE(refusals, 3);
}

// Only the pointer tells that the lock of a new list could not be made.
template <typename List, typename Create>
void expect_null_list(Create create) {
    const auto before = fault_injection::resources_in_use();
    for (const auto& [call, status] : {std::pair{1, ORU_FAILURE}, {2, ORU_SUCCESS}}) {
        auto* list = reinterpret_cast<List*>(1);
        fault_injection::FailNth failure(call);
        const uint32_t result = create(&list);
        failure.disarm();
        EXPECT_EQ(result, status);
        EXPECT_EQ(list, nullptr);
    }
    EXPECT_EQ(fault_injection::resources_in_use(), before);
}

TEST(LockMemory, AListWhoseLockCannotBeMadeIsANullPointerWithSuccess) {
    expect_null_list<orSLL>(orSLL_Create);
    expect_null_list<orSLL2>(orSLL2_Create);
}

int agree(uintptr_t, uint32_t, uintptr_t, uint32_t) {
    return 0;
}

TEST(LockMemory, NotificationsAreFreedWhenWithdrawnServedOrLeft) {
    const Registry registry;
    const auto before = fault_injection::resources_in_use();
    {
        const Lock lock;
        orSO_SELock(lock, 0, 1);
        for (uintptr_t number = 0; number < 3; ++number) {
            EXPECT_EQ(orSO_SELockExclusiveNotify(lock, agree, number, 0), 0);
        }
        EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock, agree, 1, 0), 1);
        orSO_SELockRelease(lock);
        EXPECT_EQ(length(lock->notifications), 1);
    }
    EXPECT_EQ(fault_injection::resources_in_use(), before);
}

TEST(LockMemoryDeathTest, TheNotifyFormAborts) {
    const Lock lock;
    orSO_SELock(lock, 0, 1);
    const auto notify_without_memory = [&] {
        const fault_injection::FailNth failure(1, "malloc");
        orSO_SELockExclusiveNotify(lock, agree, 0, 0);
    };
    EXPECT_EXIT(notify_without_memory(), testing::KilledBySignal(SIGABRT), "");
}

// An attached thread that takes the lock once; it may be cancelled while it waits.
class Waiting {
public:
    Waiting(orSELock* lock, int exclusive) : lock_(lock), exclusive_(exclusive) {}
    uintptr_t identity() const { return identity_; }
    void cancel() { pthread_cancel(thread_.native_handle()); }
    // Tells whether the thread was not cancelled in the lock.
    bool join() {
        thread_.join();
        return finished_;
    }

private:
    void take_once() {
        const Attached attached;
        identity_ = orSO_GetThread();
        EXPECT_EQ(orSO_SELock(lock_, exclusive_, 1), 1);
        orSO_SELockRelease(lock_);
        finished_ = true;
    }

    orSELock* lock_;
    int exclusive_;
    std::atomic<uintptr_t> identity_{0};
    bool finished_ = false;
    std::thread thread_{[this] { take_once(); }};
};

class LockCancellation : public testing::TestWithParam<int> {
protected:
    void until_waiting(int count) {
        until_queued(lock_, exclusive_ ? count : 0, exclusive_ ? 0 : count);
    }

    const int exclusive_ = GetParam();
    const Registry registry_;
    const Lock lock_;
};
INSTANTIATE_TEST_SUITE_P(ExclusiveOrShared, LockCancellation, testing::Values(0, 1));

TEST_P(LockCancellation, AQueuedThreadLeavesTheQueue) {
    for (size_t leaver = 0; leaver < 3; ++leaver) {
        ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        std::deque<Waiting> threads;
        for (int count = 1; count <= 3; ++count) {
            threads.emplace_back(lock_, exclusive_);
            until_waiting(count);
        }
        threads[leaver].cancel();
        EXPECT_FALSE(threads[leaver].join());
        until_waiting(2);
        orSO_SELockRelease(lock_);
        EXPECT_TRUE(threads[(leaver + 1) % 3].join());
        EXPECT_TRUE(threads[(leaver + 2) % 3].join());
        EXPECT_EQ(lock_->count, 0);
    }
}

// The grant comes when the cancelled thread is already on its way out and tries for the spin word.
TEST_P(LockCancellation, AGrantThatComesTooLateIsGivenBack) {
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    Waiting thread(lock_, exclusive_);
    until_waiting(1);
    take_spin(lock_->spin);
    sleepers = 0;
    thread.cancel();
    while (sleepers == 0) {
        sched_yield();
    }
    lock_->owner = exclusive_ ? thread.identity() : ORSO_NO_THREAD;
    wake_first(exclusive_ ? lock_->writers : lock_->shared_waiters);
    release_spin(lock_->spin);
    EXPECT_FALSE(thread.join());
    EXPECT_EQ(lock_->count, 0);
    EXPECT_EQ(lock_->owner, ORSO_NO_THREAD);
    EXPECT_EQ(orSO_SELockExclusive(lock_, 0), 1);
    orSO_SELockRelease(lock_);
}

}  // namespace
