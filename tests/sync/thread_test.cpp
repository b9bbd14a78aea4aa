// Threads, thread-local indices and the tick count.
#include "vlrcomn/thread.h"

#include <sys/times.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "portability/thread_end.h"
#include "portability/tls_index.h"
#include "support/child_process.h"
#include "sync_support.h"

using namespace sync_test;

namespace {

bool any_index_in_use() {
    return std::any_of(std::begin(pTlsKeyTable), std::end(pTlsKeyTable),
                       [](const auto& word) { return word != 0; });
}

enum class Ending { by_return, by_exit, by_cancellation };

uint32_t end_thread(void* ending) {
    switch (*static_cast<Ending*>(ending)) {
        case Ending::by_exit:
            pthread_exit(nullptr);
        case Ending::by_cancellation:
            return wait_for(make_event());
        default:
            return 0xFFFFFFFE;
    }
}

TEST(Thread, EveryWayToEndSignalsTheHandleAndFreesTheIndices) {
    for (auto ending : {Ending::by_return, Ending::by_exit, Ending::by_cancellation}) {
        SCOPED_TRACE(static_cast<int>(ending));
        ASSERT_EQ(oruTlsAlloc(), 0u);
        const Handle thread = start_thread(end_thread, &ending);
        if (ending == Ending::by_cancellation) {
            EXPECT_EQ(wait_for(thread, 0), ORU_WAIT_TIMEOUT);
            EXPECT_EQ(pthread_cancel(*static_cast<pthread_t*>(thread->pData)), 0);
        }
        EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
        EXPECT_EQ(wait_for(thread, 0), ORU_WAIT_SIGNALLED) << "stays so";
        EXPECT_EQ(thread->ppThreadSignalled, nullptr);
        EXPECT_FALSE(any_index_in_use());
    }
}

TEST(Thread, MayEndAfterItsHandleIsClosed) {
    const Handle go = make_event();
    ASSERT_EQ(oruTlsAlloc(), 0u);
    const auto routine = [](void* event) {
        return oruWaitForSingleObject(static_cast<oruHandle>(event), ORU_INFINITE);
    };
    start_thread(routine, go.get()).reset();
    EXPECT_EQ(oruSetEvent(go.get()), 1);
    while (any_index_in_use()) {
        sched_yield();
    }
}

TEST(Thread, ReportsAnIdOfZeroAndTheWholeResultAsTheExitValue) {
    auto ending = Ending::by_return;
    uint32_t id = 99;
    EXPECT_EQ(oruBeginThread(nullptr, 0, nullptr, nullptr, 0, &id), ORU_INVALID_HANDLE);
    EXPECT_EQ(oruCreateThread(nullptr, 0, nullptr, nullptr, 0, &id), nullptr);
    EXPECT_EQ(id, 99u);
    const Handle thread(oruBeginThread(nullptr, 1, end_thread, &ending, 4, &id));
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);

    auto* const closed =
        new StartBlock{nullptr, nullptr, &bDummyThreadSignalled, end_thread, &ending, nullptr};
    void* result = nullptr;
    std::thread([&] { result = oruThreadJuggle(closed); }).join();
    EXPECT_EQ(reinterpret_cast<uintptr_t>(result), 0xFFFFFFFEu);
    EXPECT_EQ(bDummyThreadSignalled, 0);
}

TEST(ThreadDeathTest, AnEscapedExceptionEndsTheProcess) {
    const auto escape = [](void*) -> uint32_t { throw std::runtime_error("escaped"); };
    EXPECT_DEATH(wait_for(start_thread(escape, nullptr)), "escaped");
}

class Tls : public testing::Test {
protected:
    ~Tls() override { free_tls_indices_of_process(); }
};

TEST_F(Tls, HandsOutTheLowestFreeIndex) {
    for (uint32_t index = 0; index < 512; ++index) {
        ASSERT_EQ(oruTlsAlloc(), index);
    }
    EXPECT_EQ(refusal([] { return oruTlsAlloc() + 1; }), EAGAIN);
    for (const uint32_t index : {300u, 511u, 5u, 0u}) {
        EXPECT_EQ(oruTlsFree(index), 1);
    }
    for (const uint32_t index : {0u, 5u, 300u, 511u}) {
        EXPECT_EQ(oruTlsAlloc(), index);
    }
}

TEST_F(Tls, RefusesIndicesThatAreNotInUse) {
    ASSERT_EQ(oruTlsAlloc(), 0u);
    for (const uint32_t index : {1u, 511u, 512u, ORU_TLS_OUT_OF_INDEXES}) {
        EXPECT_EQ(refusal([=] { return oruTlsFree(index); }), EINVAL) << index;
        EXPECT_EQ(refusal([=] { return oruTlsSetValue(index, nullptr); }), EINVAL) << index;
        EXPECT_EQ(refusal([=] { return oruTlsGetValue(index); }), EINVAL) << index;
    }
}

TEST_F(Tls, HoldsAValueForEachThread) {
    uint32_t index = oruTlsAlloc();
    EXPECT_EQ(refusal([=] { return oruTlsGetValue(index); }), 0) << "null is no refusal";
    EXPECT_EQ(oruTlsSetValue(index, this), 1);
    std::thread([&] {
        EXPECT_EQ(oruTlsGetValue(index), nullptr);
        EXPECT_EQ(oruTlsSetValue(index, &index), 1);
    }).join();
    EXPECT_EQ(oruTlsGetValue(index), this);
    EXPECT_EQ(oruTlsFree(index), 1);
    ASSERT_EQ(oruTlsAlloc(), index);
    EXPECT_EQ(oruTlsGetValue(index), nullptr) << "a new index, no old value";
}

TEST_F(Tls, AForkedChildLeavesItsParentsIndices) {
    const uint32_t index = oruTlsAlloc();
    EXPECT_TRUE(holds_in_child([=] {
        const uint32_t own = oruTlsAlloc();
        free_tls_indices_of_process();
        return own == index + 1 && pTlsKeyTable[index] != 0 && pTlsKeyTable[own] == 0;
    }));
}

TEST(TickCount, IsTheWrappedProduct) {
    const auto expected = [] {
        tms unused;
        return static_cast<uint32_t>(times(&unused)) * 1000u /
               static_cast<uint32_t>(sysconf(_SC_CLK_TCK));
    };
    const uint32_t before = expected(), count = oruGetTickCount(), after = expected();
    EXPECT_TRUE((before <= count && count <= after) || after < before) << "wrapped just now";
}

}  // namespace
