// Threads and thread-local indices.
#include "vlrcomn/thread.h"

#include <limits.h>

#include <stdexcept>
#include <thread>

#include "portability/tls_index.h"
#include "sync_support.h"

using namespace sync_test;

namespace {

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
        EXPECT_EQ(pTlsKeyTable[0], 0u);
    }
}

TEST(Thread, ReportsAnIdOfZero) {
    auto ending = Ending::by_return;
    uint32_t id = 99;
    EXPECT_EQ(oruBeginThread(nullptr, 0, nullptr, nullptr, 0, &id), ORU_INVALID_HANDLE);
    EXPECT_EQ(oruCreateThread(nullptr, 0, nullptr, nullptr, 0, &id), nullptr);
    const Handle thread(oruBeginThread(nullptr, 1, end_thread, &ending, 4, &id));
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
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
    // Some systems have fewer keys than the table has places.
    const bool all = PTHREAD_KEYS_MAX >= 1024;
    const uint32_t count = all ? 512 : PTHREAD_KEYS_MAX / 2;
    for (uint32_t index = 0; index < count; ++index) {
        ASSERT_EQ(oruTlsAlloc(), index);
    }
    if (all) {
        EXPECT_EQ(refusal([] { return oruTlsAlloc() + 1; }), EAGAIN);
    }
    EXPECT_EQ(refusal([] { return oruTlsSetValue(512, nullptr); }), EINVAL);
    EXPECT_EQ(oruTlsFree(count - 1), 1);
    EXPECT_EQ(oruTlsFree(5), 1);
    EXPECT_EQ(oruTlsAlloc(), 5u);
    EXPECT_EQ(oruTlsAlloc(), count - 1);
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
}

}  // namespace
