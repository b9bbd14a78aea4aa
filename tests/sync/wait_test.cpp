#include <chrono>
#include <thread>
#include <vector>

#include "sync_support.h"

using namespace sync_test;

namespace {

class Wait : public Bounded {};

TEST_F(Wait, RefusesWhatDoesNotFit) {
    const auto file = velora_com::qel::portability::make_handle_record(ORU_KIND_FILE);
    const Handle event = make_event(1);
    const Handle mutex = make_mutex();
    constexpr auto refused = static_cast<uint32_t>(EINVAL);
    const struct {
        int (*call)(oruHandle);
        uint32_t noted_for_null, noted_for_invalid;
        oruHandle other;
    } cases[] = {
        {oruSetEvent, refused, refused, mutex.get()},
        {oruResetEvent, refused, 0, mutex.get()},
        {oruReleaseMutex, 0, refused, event.get()},
        {[](oruHandle h) { return static_cast<int>(oruWaitForSingleObject(h, 0)); }, refused,
         refused, file.get()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const auto noted = [&](oruHandle h) { return noted_by([&] { EXPECT_EQ(c.call(h), 0); }); };
        EXPECT_EQ(noted(nullptr), c.noted_for_null);
        EXPECT_EQ(noted(ORU_INVALID_HANDLE), c.noted_for_invalid);
        EXPECT_EQ(noted(c.other), refused);
    }
    for (const auto& [manual_reset, name] : {std::pair{0, ""}, {2, ""}, {1, "named"}}) {
        EXPECT_EQ(oruCreateEvent(nullptr, manual_reset, 0, name), nullptr);
    }
    const oruHandle handles[] = {event.get(), nullptr};
    const auto multiple = oruWaitForMultipleObjects;
    EXPECT_EQ(multiple(1, handles, 1, ORU_INFINITE), ORU_WAIT_FAILED) << "wait for all";
    EXPECT_EQ(multiple(1, handles, 0, 0), ORU_WAIT_TIMEOUT) << "looks at nothing";
    EXPECT_EQ(multiple(0, handles, 0, 10), ORU_WAIT_FAILED);
    EXPECT_EQ(multiple(1, nullptr, 0, 10), ORU_WAIT_FAILED);
    EXPECT_EQ(multiple(1, handles + 1, 0, 10), ORU_WAIT_FAILED) << "a bad handle";
}

TEST_F(Wait, AnEventStaysAsItIsPut) {
    const Handle event = make_event(1);
    EXPECT_EQ(wait_for(event), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(wait_for(event, 0), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(oruResetEvent(event.get()), 1);
    EXPECT_EQ(wait_for(event, 0), ORU_WAIT_TIMEOUT);
    EXPECT_EQ(oruSetEvent(event.get()), 1);
    EXPECT_EQ(wait_for(event, 0), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(wait_for(make_event(2), 0), ORU_WAIT_TIMEOUT) << "a flag of 2 is false";
}

TEST_F(Wait, OnlyTheOwnerReleasesAMutex) {
    const Handle mutex = make_mutex(1);
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "not recursive";
    std::thread([&] {
        EXPECT_EQ(oruReleaseMutex(mutex.get()), 0);
        EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT);
    }).join();
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 0) << "free";
    EXPECT_EQ(wait_for(make_mutex(2), 0), ORU_WAIT_SIGNALLED) << "a flag of 2 is false";
}

// A look of 10 ms fails by contract when it starts in the last 10 ms of a second.
uint32_t wait_for_any(const std::vector<oruHandle>& handles, uint32_t milliseconds) {
    uint32_t result = ORU_WAIT_FAILED;
    while (result == ORU_WAIT_FAILED) {
        result = oruWaitForMultipleObjects(static_cast<uint32_t>(handles.size()), handles.data(), 2,
                                           milliseconds);
    }
    return result;
}

TEST_F(Wait, LooksAtOneHandleAfterAnother) {
    const Handle reset = make_event();
    const Handle set = make_event(1);
    const Handle mutex = make_mutex();
    EXPECT_EQ(wait_for_any({set.get(), reset.get()}, 10), 2u);
    EXPECT_EQ(wait_for_any({reset.get(), set.get()}, 20), 3u) << "index 1 reads as a time-out";
    EXPECT_EQ(wait_for_any({reset.get(), reset.get(), mutex.get()}, 30), 4u);
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "the multiple wait took it";
    EXPECT_EQ(wait_for_any({reset.get(), reset.get(), set.get()}, 20), 3u) << "two looks only";
    EXPECT_EQ(wait_for_any({reset.get(), reset.get(), set.get()}, 21), 4u) << "a third look";
    // Round the end: the third look is at the first handle again.
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(wait_for_any({reset.get(), reset.get()}, 30), ORU_WAIT_TIMEOUT);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(29));
}

TEST(Interlocked, CountsAndExchanges) {
    int32_t word = INT32_MAX;
    EXPECT_EQ(oruInterlockedIncrement(&word), INT32_MIN);
    EXPECT_EQ(oruInterlockedDecrement(&word), INT32_MAX);
    EXPECT_EQ(oruInterlockedExchange(&word, -1), INT32_MAX);
    EXPECT_EQ(word, -1);
    for (const auto& call :
         {+[] { oruInterlockedIncrement(nullptr); }, +[] { oruInterlockedDecrement(nullptr); },
          +[] { oruInterlockedExchange(nullptr, 1); }}) {
        EXPECT_EQ(noted_by(call), static_cast<uint32_t>(EINVAL));
    }
}

struct Waiter {
    const Handle* handle;
    int mode;  // 0 without limit, 1 with a long time-out, 2 through the multiple wait
    std::atomic<bool> destroyed{false};
};

void* wait_until_cancelled(void* parameter) {
    auto* waiter = static_cast<Waiter*>(parameter);
    const DestructionMark mark{waiter->destroyed};
    for (;;) {
        if (waiter->mode == 2) {
            const oruHandle handles[] = {waiter->handle->get()};
            oruWaitForMultipleObjects(1, handles, 0, ORU_INFINITE);
        } else {
            wait_for(*waiter->handle, waiter->mode == 1 ? 1'000'000 : ORU_INFINITE);
        }
    }
}

TEST_F(Wait, CancellationLeavesNothingLocked) {
    const Handle event = make_event();
    const Handle mutex = make_mutex(1);
    for (const Handle* handle : {&event, &mutex}) {
        for (int round = 0; round < 60; ++round) {
            Waiter waiter{handle, round % 3};
            pthread_t thread;
            ASSERT_EQ(pthread_create(&thread, nullptr, wait_until_cancelled, &waiter), 0);
            for (int turn = 0; turn < round; ++turn) {
                sched_yield();  // cancelled before, while and after it goes to sleep
            }
            pthread_cancel(thread);
            void* result = nullptr;
            pthread_join(thread, &result);
            EXPECT_EQ(result, PTHREAD_CANCELED);
#if defined(__GLIBC__)
            EXPECT_TRUE(waiter.destroyed);
#endif
            EXPECT_EQ(pthread_mutex_trylock(&(*handle)->mutex), 0);
            pthread_mutex_unlock(&(*handle)->mutex);
        }
    }
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
}

}  // namespace
