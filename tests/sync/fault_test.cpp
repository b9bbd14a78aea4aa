#include "portability/tls_index.h"
#include "support/fault_injection.h"
#include "sync_support.h"

using namespace sync_test;
using fault_injection::FailNth;
using fault_injection::walk_failures;

namespace {

uint32_t do_nothing(void*) {
    return 0;
}

// Walks a creating function; every failure is to be reported.
template <typename Create>
void walk(Create create, int at_least) {
    oruHandle handle = nullptr;
    const auto walked = walk_failures(
        [&] {
            handle = create();
            return handle != nullptr && handle != ORU_INVALID_HANDLE;
        },
        [&] {
            oruWaitForSingleObject(handle, ORU_INFINITE);
            oruCloseHandle(handle);
        });
    EXPECT_GE(walked.calls, at_least);
    EXPECT_EQ(walked.tolerated, 0);
}

class Faults : public Bounded {};

TEST_F(Faults, CreatingFunctionsUndoWhatTheyBegan) {
    walk([] { return oruCreateEvent(nullptr, 1, 1, ""); }, 5);
    walk([] { return oruCreateMutex(nullptr, 0, nullptr); }, 5);
    // Owned by its creator: released by the walk's wait only if it is free.
    walk(
        [] {
            const oruHandle mutex = oruCreateMutex(nullptr, 1, nullptr);
            if (mutex != nullptr) {
                const FailNth none(0);
                oruReleaseMutex(mutex);
            }
            return mutex;
        },
        6);
    walk([] { return oruBeginThread(nullptr, 0, do_nothing, nullptr, 0, nullptr); }, 8);
    walk([] { return oruCreateThread(nullptr, 0, do_nothing, nullptr, 0, nullptr); }, 8);
}

TEST_F(Faults, AnIndexIsTakenOnlyWithItsKey) {
    uint32_t index = 0;
    const auto walked = walk_failures(
        [&] {
            index = oruTlsAlloc();
            return index != ORU_TLS_OUT_OF_INDEXES;
        },
        [&] { EXPECT_EQ(oruTlsFree(index), 1); });
    EXPECT_EQ(walked.calls, 2);
    EXPECT_EQ(walked.tolerated, 0);
    EXPECT_EQ(velora_com::qel::portability::pTlsKeyTable[0], 0u);
}

TEST_F(Faults, FailuresAreNotedAndKeptInErrno) {
    const auto failing = [](const char* call, int nth, auto create) {
        return noted_by([&] {
            errno = 0;
            const FailNth failure(nth, call);
            create();
        });
    };
    const auto event = [] { EXPECT_EQ(oruCreateEvent(nullptr, 1, 1, nullptr), nullptr); };
    const auto mutex = [] { EXPECT_EQ(oruCreateMutex(nullptr, 0, nullptr), nullptr); };
    const auto thread = [] {
        EXPECT_EQ(oruBeginThread(nullptr, 0, do_nothing, nullptr, 0, nullptr), ORU_INVALID_HANDLE);
    };
    EXPECT_EQ(failing("malloc", 1, event), static_cast<uint32_t>(ENOMEM));
    EXPECT_EQ(oruGetLastError(), ORU_ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(failing("pthread_cond_init", 1, event), 0u);
    EXPECT_EQ(failing("pthread_cond_broadcast", 1, event), static_cast<uint32_t>(EBUSY));
    for (int nth = 1; nth <= 2; ++nth) {
        EXPECT_EQ(failing("malloc", nth, mutex), static_cast<uint32_t>(ENOMEM));
    }
    for (int nth = 1; nth <= 3; ++nth) {
        EXPECT_EQ(failing("malloc", nth, thread), static_cast<uint32_t>(ENOMEM));
        EXPECT_EQ(oruGetLastError(), ORU_ERROR_NO_MORE_ITEMS);
    }
    EXPECT_EQ(failing("pthread_create", 1, thread), 0u);
}

// Every call of an event or mutex whose lock, broadcast or clock fails gives its failure and leaves the
// record unlocked.
TEST_F(Faults, AFailingStepLeavesNothingLocked) {
    const Handle event = make_event();
    const Handle mutex = make_mutex();
    const auto fails = [](const char* call, const Handle& handle, auto operation) {
        SCOPED_TRACE(call);
        uint32_t result = 1;
        {
            FailNth failure(1, call);
            result = static_cast<uint32_t>(operation());
            failure.disarm();
            EXPECT_NE(failure.fired(), nullptr);
        }
        EXPECT_EQ(result, 0u);
        EXPECT_EQ(pthread_mutex_trylock(&handle->mutex), 0);
        pthread_mutex_unlock(&handle->mutex);
    };
    fails("pthread_mutex_lock", event, [&] { return oruSetEvent(event.get()); });
    fails("pthread_mutex_lock", event, [&] { return oruResetEvent(event.get()); });
    fails("pthread_mutex_lock", event, [&] { return wait_for(event, 0); });
    fails("pthread_mutex_lock", event, [&] { return oruCloseHandle(event.get()); });
    fails("gettimeofday", event, [&] { return wait_for(event, 1000); });
    fails("pthread_cond_broadcast", event, [&] { return oruSetEvent(event.get()); });
    fails("pthread_mutex_trylock", mutex, [&] { return wait_for(mutex, 0); });
    fails("pthread_mutex_lock", mutex, [&] { return oruReleaseMutex(mutex.get()); });
    EXPECT_EQ(wait_for(mutex), ORU_WAIT_SIGNALLED);
    fails("pthread_cond_broadcast", mutex, [&] { return oruReleaseMutex(mutex.get()); });
}

TEST_F(Faults, TheDeadlineIsNotCarriedIntoTheSeconds) {
    const Handle reset = make_event();
    const Handle set = make_event(1);
    const Handle owned = make_mutex(1);
    const struct {
        int32_t microsecond;
        uint32_t milliseconds;
        uint32_t result;
    } cases[] = {
        {999'999, 0, ORU_WAIT_TIMEOUT},
        {0, 999, ORU_WAIT_TIMEOUT},
        {1'000, 999, ORU_WAIT_FAILED},
        {999, 999, ORU_WAIT_TIMEOUT},
        {990'000, 10, ORU_WAIT_FAILED},
        {989'999, 10, ORU_WAIT_TIMEOUT},
        {500'000, 500, ORU_WAIT_FAILED},
        {999'999, 1000, ORU_WAIT_TIMEOUT},
        {999'999, 4'294'967'290, ORU_WAIT_FAILED},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.microsecond << " us, " << c.milliseconds << " ms");
        fault_injection::set_clock(timeval{1, c.microsecond});
        EXPECT_EQ(wait_for(reset, c.milliseconds), c.result);
        EXPECT_EQ(wait_for(owned, c.milliseconds), c.result);
        EXPECT_EQ(wait_for(set, c.milliseconds), ORU_WAIT_SIGNALLED) << "needs no deadline";
        EXPECT_EQ(oruResetEvent(reset.get()), 1) << "unlocked";
    }
    fault_injection::set_clock(std::nullopt);
}

}  // namespace
