// Locks when the system refuses memory, when threads are cancelled, and when the spin word stays held.
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <utility>

#include "lists/se_lock_wait.h"
#include "locks/peers.h"
#include "support/fault_injection.h"
#include "vlrcomn/locked_list.h"

using namespace locks;
using namespace velora_com::qel::lists;
using fault_injection::FailNth;
using fault_injection::resources_in_use;
using fault_injection::walk_failures;

namespace {

std::atomic<int> sleepers{0};

}  // namespace

// Nobody really sleeps for a spin word, but may be cancelled there.
extern "C" int __wrap_usleep(useconds_t) {
    ++sleepers;
    pthread_testcancel();
    sched_yield();
    errno = EINTR;
    return -1;
}

namespace {

TEST(SpinWord, BacksOffAsDocumentedAndKeepsErrno) {
    for (const auto& [failed_tries, microseconds] : {std::pair{1u, -1},
                                                     {4000u, -1},
                                                     {4001u, 0},
                                                     {4100u, 0},
                                                     {4101u, 10000},
                                                     {4200u, 10000},
                                                     {4201u, 100000},
                                                     {4300u, 100000},
                                                     {4301u, 1000000},
                                                     {4400u, 1000000},
                                                     {4401u, -1}}) {
        EXPECT_EQ(sleep_after(failed_tries), microseconds) << failed_tries;
    }
    int32_t spin = 0;
    EXPECT_EQ(orSL_Get(&spin), 0);
    EXPECT_EQ(spin, 1);
    sleepers = 0;
    std::thread waiting([&] {
        errno = EDOM;
        orSL_Get(&spin);
        EXPECT_EQ(errno, EDOM);
    });
    pthread_cancel(waiting.native_handle());
    while (sleepers == 0) {
        sched_yield();
    }
    orSL_Release(&spin);
    waiting.join();
    EXPECT_EQ(spin, 1) << "taken, as if nobody had cancelled";
}

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
    for (const char* call : {"malloc", "pthread_cond_init", "pthread_setspecific"}) {
        orSO_ThreadDetach();
        const auto before = resources_in_use().allocations;
        FailNth failure(1, call);
        const uintptr_t result = orSO_ThreadAttach();
        failure.disarm();
        EXPECT_EQ(result, 0u) << call;
        EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
        EXPECT_EQ(resources_in_use().allocations, before) << call;
    }
}

// Only the pointer tells that the lock of a new list could not be made.
template <typename List>
void expect_null_list(uint32_t (*create)(List**)) {
    const auto before = resources_in_use();
    for (const auto& [call, status] : {std::pair{1, ORU_FAILURE}, {2, ORU_SUCCESS}}) {
        auto* list = reinterpret_cast<List*>(1);
        FailNth failure(call);
        const uint32_t result = create(&list);
        failure.disarm();
        EXPECT_EQ(result, status);
        EXPECT_EQ(list, nullptr);
    }
    EXPECT_EQ(resources_in_use(), before);
}

TEST(LockMemory, AListWhoseLockCannotBeMadeIsANullPointerWithSuccess) {
    expect_null_list(orSLL_Create);
    expect_null_list(orSLL2_Create);
}

int agree(uintptr_t, uint32_t, uintptr_t, uint32_t) {
    return 0;
}

TEST(LockMemory, NotificationsAreFreedWhenWithdrawnServedOrLeft) {
    const Registry registry;
    const auto before = resources_in_use();
    {
        const Lock lock;
        shared_behind_writers(lock, 1);
        for (uintptr_t number = 0; number < 3; ++number) {
            EXPECT_EQ(orSO_SELockExclusiveNotify(lock, agree, number, 0), 0);
        }
        EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock, agree, 1, 0), 1);
        orSO_SELockRelease(lock);
        EXPECT_EQ(length(lock->notifications), 1);
    }
    EXPECT_EQ(resources_in_use(), before);
}

TEST(LockMemoryDeathTest, TheNotifyFormAborts) {
    const Lock lock;
    shared_behind_writers(lock, 1);
    const auto notify_without_memory = [&] {
        const FailNth failure(1, "malloc");
        orSO_SELockExclusiveNotify(lock, agree, 0, 0);
    };
    EXPECT_EXIT(notify_without_memory(), testing::KilledBySignal(SIGABRT), "");
}

class LockCancellation : public testing::TestWithParam<Mode> {
protected:
    const Registry registry_;
    const Lock lock_;
};
INSTANTIATE_TEST_SUITE_P(Modes, LockCancellation,
                         testing::Values(exclusive, shared_behind_writers));

TEST_P(LockCancellation, AQueuedThreadLeavesTheQueue) {
    for (int leaver = 0; leaver < 3; ++leaver) {
        ASSERT_EQ(exclusive(lock_, 1), 1);
        Peer peers[3];
        for (Peer& peer : peers) {
            queue(peer, lock_, GetParam());
        }
        peers[leaver].cancel();
        peers[leaver].join();
        EXPECT_EQ(queued(lock_), 2);
        orSO_SELockRelease(lock_);
        for (const int next : {2, 1, 0}) {  // as the lock lets writers in
            if (next != leaver) {
                peers[next].run([this] { orSO_SELockRelease(lock_); });
            }
        }
        EXPECT_EQ(lock_->count, 0);
    }
}

// The grant comes when the cancelled thread is already on its way out and tries for the spin word.
TEST_P(LockCancellation, AGrantThatComesTooLateIsGivenBack) {
    Peer peer;
    uintptr_t identity = 0;
    peer.run([&] { identity = orSO_GetThread(); });
    ASSERT_EQ(exclusive(lock_, 1), 1);
    queue(peer, lock_, GetParam());
    take_spin(lock_->spin);
    sleepers = 0;
    peer.cancel();
    while (sleepers == 0) {
        sched_yield();
    }
    lock_->owner = GetParam() == exclusive ? identity : ORSO_NO_THREAD;
    wake_first(GetParam() == exclusive ? lock_->writers : lock_->shared_waiters);
    release_spin(lock_->spin);
    peer.join();
    EXPECT_EQ(lock_->count, 0);
    EXPECT_EQ(lock_->owner, ORSO_NO_THREAD);
}

}  // namespace
