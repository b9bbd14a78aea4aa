// Handles and waits in one thread, and the cancellation of a waiting one.
#include "vlrcomn/handle.h"

#include <chrono>
#include <thread>
#include <vector>

#include "sync_support.h"

using namespace sync_test;

namespace {

TEST(CloseHandle, FreesOnTheLastReferenceOfAKnownKind) {
    EXPECT_EQ(oruCloseHandle(nullptr), 1);
    EXPECT_EQ(oruCloseHandle(ORU_INVALID_HANDLE), 1);
    EXPECT_EQ(oruCloseHandle(make_handle_record(4).get()), 0);
    const Handle event = make_event();
    event->nRefCount = 2;
    EXPECT_EQ(oruCloseHandle(event.get()), 1);
    EXPECT_EQ(oruSetEvent(event.get()), 1);
}

TEST(LastError, TranslatesByName) {
    const std::pair<int, uint32_t> codes[] = {
        {0, 0},      {ENOENT, 38},   {EBADF, 126}, {ENOMEM, 259},        {EDEADLK, 997},
        {EACCES, 5}, {EINVAL, 1010}, {EROFS, 19},  {EPERM, 0x80000008u}, {-1, 0x80000008u},
    };
    for (const auto& [error, code] : codes) {
        errno = error;
        EXPECT_EQ(oruGetLastError(), code) << error;
        EXPECT_EQ(errno, error);
    }
}

TEST(Wait, RefusesWhatDoesNotFit) {
    const auto file = make_handle_record(ORU_KIND_FILE);
    const Handle event = make_event(1), mutex = make_mutex();
    const auto refuses = [](auto call, oruHandle other) {
        for (const oruHandle handle : {oruHandle{}, ORU_INVALID_HANDLE, other}) {
            EXPECT_EQ(static_cast<uint32_t>(call(handle)), 0u);
        }
    };
    refuses(oruSetEvent, mutex.get());
    refuses(oruResetEvent, mutex.get());
    refuses(oruReleaseMutex, event.get());
    refuses([](oruHandle handle) { return oruWaitForSingleObject(handle, 0); }, file.get());
    EXPECT_EQ(oruCreateEvent(nullptr, 1, 0, "named"), nullptr);
    const oruHandle handles[] = {event.get(), nullptr};
    const auto multiple = oruWaitForMultipleObjects;
    EXPECT_EQ(multiple(1, handles, 1, ORU_INFINITE), ORU_WAIT_FAILED) << "wait for all";
    EXPECT_EQ(multiple(1, handles, 0, 0), ORU_WAIT_TIMEOUT) << "looks at nothing";
    EXPECT_EQ(multiple(1, handles + 1, 0, 10), ORU_WAIT_FAILED) << "a bad handle";
}

TEST(Wait, AnEventStaysAsItIsPut) {
    const Handle event = make_event(1);
    EXPECT_EQ(wait_for(event), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(wait_for(event, 0), ORU_WAIT_SIGNALLED);
    EXPECT_EQ(oruResetEvent(event.get()), 1);
    EXPECT_EQ(wait_for(event, 0), ORU_WAIT_TIMEOUT);
}

TEST(Wait, OnlyTheOwnerReleasesAMutex) {
    const Handle mutex = make_mutex(1);
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "not recursive";
    std::thread([&] {
        EXPECT_EQ(oruReleaseMutex(mutex.get()), 0);
        EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT);
    }).join();
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 0) << "free";
}

TEST(Wait, LooksAtOneHandleAfterAnotherForTenMilliseconds) {
    const Handle event = make_event(), event_set = make_event(1), mutex = make_mutex();
    const oruHandle reset = event.get(), set = event_set.get();
    const struct {
        std::vector<oruHandle> handles;
        uint32_t limit, result;
    } cases[] = {
        {{set, reset}, 10, 2},
        {{reset, set}, 20, 3},  // index 1 reads as a time-out
        {{reset, reset, mutex.get()}, 30, 4},
        {{reset, reset, set}, 21, 4},
        {{reset, reset}, 30, ORU_WAIT_TIMEOUT},  // round the end
    };
    const auto start = std::chrono::steady_clock::now();
    for (const auto& [handles, limit, expected] : cases) {
        const auto count = static_cast<uint32_t>(handles.size());
        uint32_t result = ORU_WAIT_FAILED;
        while (result == ORU_WAIT_FAILED) {  // by contract, in the last 10 ms of a second
            result = oruWaitForMultipleObjects(count, handles.data(), 2, limit);
        }
        EXPECT_EQ(result, expected) << count << " handles, " << limit << " ms";
    }
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(75));
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "the multiple wait took it";
}

template <uint32_t limit>
void* wait_until_cancelled(void* handle) {
    for (;;) {
        oruWaitForSingleObject(static_cast<oruHandle>(handle), limit);
    }
}

TEST(Wait, CancellationLeavesNothingLocked) {
    const Handle event = make_event(), mutex = make_mutex(1);
    for (int round = 0; round < 120; ++round) {
        const Handle& handle = round % 2 == 0 ? event : mutex;
        const auto routine =
            round % 4 < 2 ? wait_until_cancelled<ORU_INFINITE> : wait_until_cancelled<1'000'000>;
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, nullptr, routine, handle.get()), 0);
        for (int turn = 0; turn < round / 2; ++turn) {
            sched_yield();  // cancelled before, while and after it goes to sleep
        }
        pthread_cancel(thread);
        void* result = nullptr;
        pthread_join(thread, &result);
        EXPECT_EQ(result, PTHREAD_CANCELED);
        expect_unlocked(handle);
    }
}

}  // namespace
