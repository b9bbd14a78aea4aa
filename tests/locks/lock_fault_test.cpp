// Locks when the system refuses memory, and when the spin word stays held.

#include "locks/peers.h"
#include "support/fault_injection.h"
#include "vlrcomn/locked_list.h"

using namespace locks;

static std::atomic<int> sleepers{0};

// A lock whose spin word is held until somebody sleeps for it, and the holds that it had then.
static orSELock* engaged = nullptr;
static int32_t holds_then = -1;
static void let_go() VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    holds_then = engaged->count;
    std::exchange(engaged, nullptr)->spin.unlock();
}

// Nobody really sleeps for a spin word, but may be cancelled there.
extern "C" int __wrap_usleep(useconds_t) {
    ++sleepers;
    if (engaged != nullptr) {
        let_go();
    }
    pthread_testcancel();
    return 0;
}

TEST(SpinWord, BacksOffAsDocumentedAndIsNotCancelled) {
    const int stages[] = {-1, 0, 10000, 100000, 1000000, -1};  // microseconds; -1 tries on
    for (uint32_t stage = 0; stage < 5; ++stage) {
        EXPECT_EQ(velora_com::qel::locks::sleep_after(4000 + 100 * stage), stages[stage]);
        EXPECT_EQ(velora_com::qel::locks::sleep_after(4001 + 100 * stage), stages[stage + 1]);
    }
    int32_t spin = 1;
    std::thread waiting([&] {
        pthread_cancel(pthread_self());
        orSL_Get(&spin);
    });
    while (sleepers == 0) {
        sched_yield();
    }
    orSL_Release(&spin);
    waiting.join();
    EXPECT_EQ(spin, 1) << "taken, as if nobody had cancelled";
}

TEST(SpinWord, IsWaitedForByWhateverChangesTheLock) {
    const Registry registry;
    orSELock* lock;
    ASSERT_EQ(orSO_SELockCreate(&lock), ORU_SUCCESS);
    const auto ask = [](orSELock* of) { orSO_SELockExclusiveNotify(of, nullptr, 0, 0); };
    const auto ask_no_more = [](orSELock* of) { orSO_SELockExclusiveUnnotify(of, nullptr, 0, 0); };
    const auto request = [](Mode mode) { return [=](orSELock* of) { EXPECT_EQ(mode(of, 0), 1); }; };
    const std::tuple<const char*, std::function<void(orSELock*)>, int32_t> calls[] = {
        {"exclusive", request(exclusive), 0},
        {"shared", request(shared_behind_writers), 1},
        {"shared, past writers", request(shared_past_writers), 2},
        {"notify", ask, 3},
        {"unnotify", ask_no_more, 4},
        {"downgrade", orSO_SELockExclusiveToShared, 4},
        {"release", orSO_SELockRelease, 4},
    };
    for (const auto& [name, call, holds] : calls) {
        SCOPED_TRACE(name);
        holds_then = -1;
        orSL_Get(&lock->spin.word);
        engaged = lock;
        call(lock);
        EXPECT_EQ(holds_then, holds);
        EXPECT_EQ(lock->spin.word, 0);
    }
    orSO_Release(lock);
}

TEST(LockMemory, AListWhoseLockCannotBeMadeIsANullPointerWithSuccess) {
    for (const auto& [call, status] : {std::pair{1, ORU_FAILURE}, {2, ORU_SUCCESS}}) {
        auto* list = reinterpret_cast<orSLL2*>(1);
        const auto create = [&] { return orSLL2_Create(&list); };
        EXPECT_EQ(fault_injection::failing(call, nullptr, create), status);
        EXPECT_EQ(list, nullptr);
    }
}
