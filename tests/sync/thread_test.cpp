#include <sys/times.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>

#include "portability/thread_end.h"
#include "portability/tls_index.h"
#include "sync_support.h"

using namespace sync_test;
using namespace velora_com::qel::portability;

namespace {

class Thread : public Bounded {};

uint32_t return_number(void* number) {
    return *static_cast<uint32_t*>(number);
}

// A routine that ends in one of several ways, below a C++ object.
struct Ending {
    enum Way { by_return, by_exit, by_cancellation } way;
    std::atomic<bool> ready{false}, destroyed{false};
};

uint32_t end_somehow(void* parameter) {
    auto* ending = static_cast<Ending*>(parameter);
    const DestructionMark mark{ending->destroyed};
    ending->ready = true;
    if (ending->way == Ending::by_exit) {
        pthread_exit(nullptr);
    }
    const Handle never = make_event();
    return ending->way == Ending::by_cancellation ? wait_for(never) : 7;
}

bool any_index_in_use() {
    return std::any_of(std::begin(pTlsKeyTable), std::end(pTlsKeyTable),
                       [](const auto& word) { return word != 0; });
}

TEST_F(Thread, EveryWayToEndSignalsOnceAndFreesTheIndices) {
    for (const auto way : {Ending::by_return, Ending::by_exit, Ending::by_cancellation}) {
        SCOPED_TRACE(way);
        ASSERT_EQ(oruTlsAlloc(), 0u);
        Ending ending{way};
        const Handle thread = start_thread(end_somehow, &ending);
        if (way == Ending::by_cancellation) {
            while (!ending.ready) {
                sched_yield();
            }
            EXPECT_EQ(wait_for(thread, 0), ORU_WAIT_TIMEOUT);
            EXPECT_EQ(pthread_cancel(*static_cast<pthread_t*>(thread->pData)), 0);
        }
        EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
        EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
        EXPECT_FALSE(any_index_in_use());
#if defined(__GLIBC__)
        EXPECT_TRUE(ending.destroyed);
#endif
    }
}

TEST_F(Thread, ReportsAnIdOfZero) {
    uint32_t number = 1;
    uint32_t id = 99;
    const Handle thread(oruBeginThread(nullptr, 1, return_number, &number, 4, &id));
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
    id = 99;
    EXPECT_EQ(oruBeginThread(nullptr, 0, nullptr, nullptr, 0, &id), ORU_INVALID_HANDLE);
    EXPECT_EQ(oruCreateThread(nullptr, 0, nullptr, nullptr, 0, &id), nullptr);
    EXPECT_EQ(id, 99u);
}

TEST_F(Thread, TheResultIsTheExitValue) {
    uint32_t number = 0xFFFFFFFE;
    const Handle record(make_handle_record(ORU_KIND_THREAD).release());
    auto* block = new StartBlock{&record->mutex, &record->cond, &record->bSignalled,
                                 return_number,  &number,       record.get()};
    record->ppThreadSignalled = &block->signal;
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, nullptr, oruThreadJuggle, block), 0);
    void* result = nullptr;
    pthread_join(thread, &result);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(result), 0xFFFFFFFEu);
    EXPECT_EQ(wait_for(record, 0), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(record->ppThreadSignalled, nullptr);
}

TEST_F(Thread, MayEndAfterItsHandleIsClosed) {
    const Handle go = make_event();
    ASSERT_EQ(oruTlsAlloc(), 0u);
    Handle thread = start_thread(
        [](void* event) {
            return oruWaitForSingleObject(static_cast<oruHandle>(event), ORU_INFINITE);
        },
        go.get());
    thread.reset();
    EXPECT_EQ(oruSetEvent(go.get()), 1);
    while (any_index_in_use()) {
        sched_yield();
    }
    EXPECT_EQ(bDummyThreadSignalled, 0);
}

TEST(ThreadDeathTest, AnEscapedExceptionEndsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            const Handle thread = start_thread(
                [](void*) -> uint32_t { throw std::runtime_error("escaped"); }, nullptr);
            wait_for(thread);
        },
        "escaped");
}

TEST(TickCount, IsTheWrappedProduct) {
    const auto expected = [] {
        tms unused;
        const auto ticks = static_cast<uint64_t>(times(&unused));
        const auto rate = static_cast<uint32_t>(sysconf(_SC_CLK_TCK));
        return static_cast<uint32_t>((ticks * 1000) % (uint64_t{1} << 32)) / rate;
    };
    const uint32_t before = expected(), count = oruGetTickCount(), after = expected();
    if (before <= after) {  // else the count wrapped just now
        EXPECT_GE(count, before);
        EXPECT_LE(count, after);
    }
}

}  // namespace
