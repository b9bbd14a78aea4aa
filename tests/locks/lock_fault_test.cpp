// Locks when the system refuses memory, when threads are cancelled, and when the spin word stays held.
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <utility>

#include "lists/se_lock_wait.h"
#include "locks/peers.h"
#include "support/fault_injection.h"
#include "vlrcomn/locked_list.h"

using namespace locks;
using namespace velora_com::qel::lists;
using fault_injection::FailNth;
using fault_injection::resources_in_use;

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
    const int stages[] = {-1, 0, 10000, 100000, 1000000, -1};  // microseconds; -1 tries on
    for (uint32_t stage = 0; stage < 5; ++stage) {
        EXPECT_EQ(sleep_after(4000 + 100 * stage), stages[stage]) << stage;
        EXPECT_EQ(sleep_after(4001 + 100 * stage), stages[stage + 1]) << stage;
    }
    int32_t spin = 1;
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

// Only the pointer tells that the lock of a new list could not be made.
TEST(LockMemory, AListWhoseLockCannotBeMadeIsANullPointerWithSuccess) {
    const auto before = resources_in_use();
    for (const auto& [call, status] : {std::pair{1, ORU_FAILURE}, {2, ORU_SUCCESS}}) {
        auto* list = reinterpret_cast<orSLL2*>(1);
        FailNth failure(call);
        const uint32_t result = orSLL2_Create(&list);
        failure.disarm();
        EXPECT_EQ(result, status);
        EXPECT_EQ(list, nullptr);
    }
    EXPECT_EQ(resources_in_use(), before);
}

TEST(LockCancellation, AQueuedThreadLeavesTheQueue) {
    const Registry registry;
    const Lock lock;
    for (int leaver = 0; leaver < 3; ++leaver) {
        ASSERT_EQ(exclusive(lock, 1), 1);
        Peer peers[3];
        for (Peer& peer : peers) {
            queue(peer, lock, exclusive);
        }
        peers[leaver].cancel();
        peers[leaver].join();
        EXPECT_EQ(queued(lock), 2);
        orSO_SELockRelease(lock);
        for (const int next : {2, 1, 0}) {  // as the lock lets writers in
            if (next != leaver) {
                peers[next].run([&] { orSO_SELockRelease(lock); });
            }
        }
        EXPECT_EQ(lock->count, 0);
    }
}

// The grant comes when the cancelled thread is already on its way out and tries for the spin word.
TEST(LockCancellation, AGrantThatComesTooLateIsGivenBack) {
    const Registry registry;
    const Lock lock;
    Peer peer;
    uintptr_t identity = 0;
    peer.run([&] { identity = orSO_GetThread(); });
    ASSERT_EQ(exclusive(lock, 1), 1);
    queue(peer, lock, exclusive);
    take_spin(lock->spin);
    sleepers = 0;
    peer.cancel();
    while (sleepers == 0) {
        sched_yield();
    }
    lock->owner = identity;
    wake_first(lock->writers);
    release_spin(lock->spin);
    peer.join();
    EXPECT_EQ(lock->count, 0);
    EXPECT_EQ(lock->owner, ORSO_NO_THREAD);
}

}  // namespace
