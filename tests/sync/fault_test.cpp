#include "support/fault_injection.h"

#if __has_include(<linux/seccomp.h>)
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

#include "sync_support.h"
#include "vlrcomn/file.h"

using namespace sync_test;
using fault_injection::FailNth;

TEST(Faults, CreatingFunctionsUndoWhatTheyBegan) {
    const std::function<oruHandle()> creators[] = {
        [] { return oruCreateEvent(nullptr, 1, 1, ""); },
        [] { return oruCreateMutex(nullptr, 1, nullptr); },
        [] { return start_thread([](void*) { return 0u; }, nullptr).release(); },
    };
    for (const auto& create : creators) {
        oruHandle handle = nullptr;
        const auto give_back = [&] {
            oruReleaseMutex(handle);  // others refuse
            oruWaitForSingleObject(handle, ORU_INFINITE);
            oruCloseHandle(handle);
        };
        const auto walked = fault_injection::walk_failures(
            [&] { return (handle = create()) != nullptr; }, give_back);
        EXPECT_TRUE(walked.calls >= 5 && walked.tolerated == 0);
    }
}

// What goes wrong without these locks is a matter of luck; here, that they are taken.
TEST(Faults, OperationsTakeTheLocksThatExcludeOthers) {
    const auto takes = [](int nth_lock, auto operation) {
        const FailNth failure(nth_lock, "pthread_mutex_lock");
        operation();
        return failure.fired() != nullptr;
    };
    int32_t word = 0;
    EXPECT_TRUE(takes(1, [&] { oruInterlockedIncrement(&word); }) &&
                takes(1, [&] { oruInterlockedExchange(&word, 1); }));
    oruFindData data;
    const intptr_t search = oruFindFirstDirEnt("/*", &data);
    EXPECT_TRUE(takes(1, [=] { oruFindCloseDirEnt(search); }));
    EXPECT_EQ(oruFindCloseDirEnt(search), 1) << "without its lock a search stays open";
    // A thread that has ended: for the count, against its end, to outlast that.
    const oruHandle ended = make_handle_record(ORU_KIND_THREAD).release();
    EXPECT_TRUE(takes(3, [=] { oruCloseHandle(ended); }));
}

#if __has_include(<linux/seccomp.h>) && !defined(__SANITIZE_THREAD__)
// In a child that the system ends at any call but the one that ends it. ThreadSanitizer calls the system itself,
// and its own thread outlives such an end.
TEST(Faults, ALookAsksTheSystemForNothing) {
    const Handle set = make_event(1), reset = make_event(), owned = make_mutex(1),
                 mutex = make_mutex();
    const auto running = make_handle_record(ORU_KIND_THREAD);
    const pid_t child = fork();
    if (child == 0) {
        if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) != 0) {
            _exit(77);
        }
        const bool right =
            wait_for(set, 0) == ORU_WAIT_SIGNALLED && wait_for(mutex, 0) == ORU_WAIT_SIGNALLED &&
            wait_for(reset, 0) == ORU_WAIT_TIMEOUT && wait_for(owned, 0) == ORU_WAIT_TIMEOUT &&
            oruWaitForSingleObject(running.get(), 0) == ORU_WAIT_TIMEOUT;
        syscall(SYS_exit, right ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77) {
        SKIP_FOR_LACK_OF("the right to give up system calls");
    }
    EXPECT_EQ(status, 0);
}
#endif

TEST(Faults, TheDeadlineIsNotCarriedIntoTheSeconds) {
    const Handle reset = make_event(), set = make_event(1), owned = make_mutex(1);
    const std::tuple<int32_t, uint32_t, uint32_t> cases[] = {
        {999'999, 0, ORU_WAIT_TIMEOUT},
        {990'000, 10, ORU_WAIT_FAILED},
        {989'999, 10, ORU_WAIT_TIMEOUT},
        {999'999, 4'294'967'290, ORU_WAIT_FAILED}};
    for (const auto& [microsecond, milliseconds, result] : cases) {
        fault_injection::clock_time = timeval{1, microsecond};
        EXPECT_EQ(wait_for(reset, milliseconds), result) << microsecond << ", " << milliseconds;
        EXPECT_EQ(wait_for(owned, milliseconds), result);
        EXPECT_EQ(wait_for(set, milliseconds), ORU_WAIT_SIGNALLED) << "needs no deadline";
        expect_unlocked(reset);
    }
    fault_injection::clock_time.reset();
}
