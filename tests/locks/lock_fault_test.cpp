// Locks when the system refuses memory, and when the spin word stays held.

#include "locks/spin_word.h"
#include "support/fault_injection.h"
#include "vlrcomn/locked_list.h"

static std::atomic<int> sleepers{0};

// Nobody really sleeps for a spin word, but may be cancelled there.
extern "C" int __wrap_usleep(useconds_t) {
    ++sleepers;
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

TEST(LockMemory, AListWhoseLockCannotBeMadeIsANullPointerWithSuccess) {
    for (const auto& [call, status] : {std::pair{1, ORU_FAILURE}, {2, ORU_SUCCESS}}) {
        auto* list = reinterpret_cast<orSLL2*>(1);
        const auto create = [&] { return orSLL2_Create(&list); };
        EXPECT_EQ(fault_injection::failing(call, nullptr, create), status);
        EXPECT_EQ(list, nullptr);
    }
}
