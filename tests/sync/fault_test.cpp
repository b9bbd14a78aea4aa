#include "support/fault_injection.h"

#include "portability/tls_index.h"
#include "sync_support.h"

using namespace sync_test;
using fault_injection::FailNth;

namespace {

TEST(Faults, CreatingFunctionsUndoWhatTheyBegan) {
    oruHandle handle = nullptr;
    const auto expect_all_undone = [&](int at_least, auto create) {
        const auto walked =
            fault_injection::walk_failures([&] { return (handle = create()) != nullptr; },
                                           [&] {
                                               oruWaitForSingleObject(handle, ORU_INFINITE);
                                               oruReleaseMutex(handle);  // others refuse
                                               oruCloseHandle(handle);
                                           });
        EXPECT_GE(walked.calls, at_least);
        EXPECT_EQ(walked.tolerated, 0);
    };
    const auto do_nothing = [](void*) { return 0u; };
    expect_all_undone(5, [] { return oruCreateEvent(nullptr, 1, 1, ""); });
    expect_all_undone(5, [] { return oruCreateMutex(nullptr, 0, nullptr); });
    expect_all_undone(8, [=] { return start_thread(do_nothing, nullptr).release(); });
    uint32_t index = 0;
    fault_injection::walk_failures([&] { return (index = oruTlsAlloc()) + 1 != 0; },
                                   [&] { EXPECT_EQ(oruTlsFree(index), 1); });
    EXPECT_EQ(pTlsKeyTable[0], 0u);
}

// Whatever step of an operation fails, the record is left unlocked.
TEST(Faults, AFailingStepLeavesNothingLocked) {
    const Handle event = make_event(), mutex = make_mutex(), owned = make_mutex(1);
    const auto walk = [](const Handle& handle, auto operation) {
        bool fired = true;
        for (int call = 1; fired; ++call) {
            FailNth failure(call);
            const uint32_t result = static_cast<uint32_t>(operation(handle.get()));
            failure.disarm();
            fired = failure.fired() != nullptr;
            EXPECT_TRUE(result == 0 || !fired) << failure.fired();
            expect_unlocked(handle);
        }
    };
    walk(event, [](oruHandle handle) { return oruWaitForSingleObject(handle, 1); });
    walk(event, oruSetEvent);
    walk(event, oruResetEvent);
    walk(mutex, [](oruHandle handle) { return oruWaitForSingleObject(handle, 0); });
    walk(owned, oruReleaseMutex);
}

TEST(Faults, TheDeadlineIsNotCarriedIntoTheSeconds) {
    const Handle reset = make_event(), set = make_event(1), owned = make_mutex(1);
    const struct {
        int32_t microsecond;
        uint32_t milliseconds, result;
    } cases[] = {
        {999'999, 0, ORU_WAIT_TIMEOUT},
        {990'000, 10, ORU_WAIT_FAILED},
        {989'999, 10, ORU_WAIT_TIMEOUT},
        {999'999, 1000, ORU_WAIT_TIMEOUT},
        {999'999, 4'294'967'290, ORU_WAIT_FAILED},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.microsecond << " us, " << c.milliseconds << " ms");
        fault_injection::set_clock(timeval{1, c.microsecond});
        EXPECT_EQ(wait_for(reset, c.milliseconds), c.result);
        EXPECT_EQ(wait_for(owned, c.milliseconds), c.result);
        EXPECT_EQ(wait_for(set, c.milliseconds), ORU_WAIT_SIGNALLED) << "needs no deadline";
        expect_unlocked(reset);
        expect_unlocked(owned);
    }
    fault_injection::set_clock(std::nullopt);
}

}  // namespace
