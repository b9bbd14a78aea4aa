// Handles, waits and threads, alone and many at once; no sleep stands for synchronisation.
#include <limits.h>

#include "sync/error_word.h"
#include "sync/tls_index.h"
#include "sync_support.h"

using namespace sync_test;

TEST(LastError, TranslatesByName) {
    const std::pair<int, uint32_t> codes[] = {
        {0, 0},      {ENOENT, 38},   {EBADF, 126}, {ENOMEM, 259},        {EDEADLK, 997},
        {EACCES, 5}, {EINVAL, 1010}, {EROFS, 19},  {EPERM, 0x80000008u}, {-1, 0x80000008u},
    };
    for (const auto& [error, code] : codes) {
        errno = error;
        EXPECT_EQ(oruGetLastError(), code) << error;
    }
}

TEST(Handle, IsRefusedWhereItDoesNotFit) {
    const Handle event = make_event(), mutex = make_mutex();
    const auto file = make_handle_record(ORU_KIND_FILE);
    for (const oruHandle none : {oruHandle{}, ORU_INVALID_HANDLE}) {
        EXPECT_EQ(oruCloseHandle(none), 1);
        EXPECT_FALSE(oruSetEvent(none) || oruResetEvent(none) || oruReleaseMutex(none) ||
                     oruWaitForSingleObject(none, 0));
    }
    nErrno = 0;
    EXPECT_FALSE(oruSetEvent(mutex.get()) || oruResetEvent(mutex.get()) ||
                 oruReleaseMutex(event.get()) || oruWaitForSingleObject(file.get(), 0));
    EXPECT_EQ(nErrno, EINVAL);
    EXPECT_EQ(oruCloseHandle(make_handle_record(4).get()), 0);
    EXPECT_FALSE(oruCreateEvent(nullptr, 2, 0, nullptr) || oruCreateEvent(nullptr, 1, 0, "named") ||
                 oruOpenMutex(0, 0, "named") ||
                 oruCreateThread(nullptr, 0, nullptr, nullptr, 0, nullptr));
    EXPECT_EQ(oruBeginThread(nullptr, 0, nullptr, nullptr, 0, nullptr), ORU_INVALID_HANDLE);
}

TEST(Interlocked, WrapsAndTellsTheOutcomeOrWhatWasThere) {
    int32_t word = INT32_MAX;
    EXPECT_EQ(oruInterlockedIncrement(&word), INT32_MIN);
    EXPECT_EQ(oruInterlockedDecrement(&word), INT32_MAX);
    nErrno = 0;
    EXPECT_EQ(oruInterlockedIncrement(nullptr) + oruInterlockedExchange(nullptr, 1), 0);
    EXPECT_EQ(nErrno, EINVAL);
    EXPECT_EQ(oruInterlockedExchange(&word, 1), INT32_MAX);
}

TEST(Wait, OnlyTheOwnerReleasesAMutex) {
    const Handle mutex = make_mutex(1);
    std::thread([&] { EXPECT_EQ(oruReleaseMutex(mutex.get()), 0); }).join();
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "not recursive";
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
    EXPECT_EQ(oruReleaseMutex(mutex.get()), 0) << "free";
}

TEST(Wait, LooksAtOneHandleAfterAnotherForTenMilliseconds) {
    const Handle event = make_event(1), event_set = make_event(1), mutex = make_mutex();
    EXPECT_EQ(oruResetEvent(event.get()), 1);
    const oruHandle reset = event.get(), set = event_set.get();
    const std::tuple<std::vector<oruHandle>, int, uint32_t, uint32_t> cases[] = {
        {{set}, 1, ORU_INFINITE, ORU_WAIT_FAILED},
        {{set}, 0, 0, ORU_WAIT_TIMEOUT},  // looks at nothing
        {{}, 0, 10, ORU_WAIT_FAILED},
        {{nullptr}, 0, 10, ORU_WAIT_FAILED},
        {{reset, set}, 2, 20, 3},  // index 1 reads as a time-out
        {{reset, reset, mutex.get()}, 0, 30, 4},
        {{reset, reset, set}, 0, 21, 4},
        {{reset, reset}, 0, 30, ORU_WAIT_TIMEOUT},  // round the end
    };
    const auto start = std::chrono::steady_clock::now();
    for (const auto& [handles, wait_all, limit, expected] : cases) {
        const auto count = static_cast<uint32_t>(handles.size());
        uint32_t result;
        do {  // fails by design in the last 10 ms of a second
            result = oruWaitForMultipleObjects(count, handles.data(), wait_all, limit);
        } while (result == ORU_WAIT_FAILED && expected != ORU_WAIT_FAILED);
        EXPECT_EQ(result, expected) << count << " handles, " << limit << " ms";
    }
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(75));
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_TIMEOUT) << "the multiple wait took it";
}

TEST(Wait, CancellationLeavesNothingLocked) {
    NEEDS_CANCELLED_WAITS;
    const Handle event = make_event(), mutex = make_mutex(1);
    for (int round = 0; round < 120; ++round) {
        const Handle& handle = round % 2 == 0 ? event : mutex;
        std::thread waiter([&] { wait_for(handle); });
        for (int turn = 0; turn < round / 2; ++turn) {
            sched_yield();  // cancelled before, while and after it goes to sleep
        }
        pthread_cancel(waiter.native_handle());
        waiter.join();
        expect_unlocked(handle);
    }
}

TEST(Thread, EveryWayToEndSignalsTheHandleAndFreesTheIndices) {
    const oruThreadRoutine endings[] = {
        [](void*) { return 0xFFFFFFFEu; }, [](void*) -> uint32_t { pthread_exit(nullptr); },
        [](void*) { return wait_for(make_event()); },  // until it is cancelled
    };
    for (const auto& ending : endings) {
        SCOPED_TRACE(&ending - endings);
        if (&ending == endings + 2 && !condition_waits_can_be_cancelled) {
            break;
        }
        ASSERT_EQ(oruTlsAlloc(), 0u);
        uint32_t id = 99;
        const Handle thread(oruBeginThread(nullptr, 1, ending, nullptr, 4, &id));
        EXPECT_EQ(id, 0u);
        if (&ending == endings + 2) {
            EXPECT_EQ(wait_for(thread, 0), ORU_WAIT_TIMEOUT);
            EXPECT_EQ(pthread_cancel(*static_cast<pthread_t*>(thread->pData)), 0);
        }
        EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
        EXPECT_EQ(pTlsKeyTable[0], 0u);
    }
}

TEST(Tls, HandsOutTheLowestFreeIndexWithAValueForEachThread) {
    uint32_t count = 0;
    for (; oruTlsAlloc() == count; ++count) {
    }
    EXPECT_TRUE(count == 512 || PTHREAD_KEYS_MAX < 1024) << "the system has fewer keys";
    EXPECT_EQ(oruTlsAlloc(), ORU_TLS_OUT_OF_INDEXES);
    EXPECT_EQ(oruTlsFree(count - 1), 1);  // C++ wants a key of its own where the system has few
    EXPECT_EQ(oruTlsGetValue(512), nullptr);
    EXPECT_EQ(oruTlsSetValue(5, &count), 1);
    std::thread([] { EXPECT_EQ(oruTlsGetValue(5), nullptr); }).join();
    EXPECT_EQ(oruTlsGetValue(5), &count);
    EXPECT_EQ(oruTlsFree(5), 1);
    EXPECT_EQ(oruTlsFree(5), 0);
    EXPECT_EQ(oruTlsAlloc(), 5u);
    EXPECT_EQ(oruTlsGetValue(5), nullptr) << "a value of the index's former use";
    free_tls_indices_of_process();
}

TEST(Stress, ManyWaitersShareOneMutex) {
    constexpr int threads = 16, rounds = 150;
    const Handle mutex = make_mutex(), go = make_event();
    int guarded = 0;  // no atomic: the mutex is all that protects it
    together(threads, [&](int number) {
        number != threads - 1 ? wait_for(go) : static_cast<uint32_t>(oruSetEvent(go.get()));
        for (int round = 0; round < rounds; ++round) {
            // Every third thread gives up now and then; a failed or late wait must not own it.
            const auto limit = number % 3 == 0 ? static_cast<uint32_t>(round % 3) : ORU_INFINITE;
            while (wait_for(mutex, limit) != ORU_WAIT_SIGNALLED) {
                sched_yield();  // a look costs nothing, and a machine of one processor its whole turn
            }
            ++guarded;
            sched_yield();  // lets the others queue up
            EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
        }
    });
    EXPECT_EQ(guarded, threads * rounds);
}

static uint32_t add_one(void* counter) {
    return ++*static_cast<std::atomic<uint32_t>*>(counter);
}

TEST(Stress, ThreadsEndWhileTheyAreWaitedForAndClosed) {
    constexpr uint32_t starters = 6, rounds = 400;
    std::atomic<uint32_t> ran{0};
    together(starters, [&](int number) {
        for (uint32_t round = 0; round < rounds; ++round) {
            Handle thread;
            for (; thread == nullptr; thread = start_thread(add_one, &ran)) {
                sched_yield();  // the system's bound on threads
            }
            // Waits; or sees the end as early as can be, before the broadcast; or closes at once.
            const uint32_t limit = number % 3 == 0 ? ORU_INFINITE : 0;
            while (number % 3 != 2 && wait_for(thread, limit) != ORU_WAIT_SIGNALLED) {
                sched_yield();
            }
        }
    });
    while (ran != starters * rounds) {
        sched_yield();
    }
}

// Indices are swept, by two ends at once, while others read and write through them, and the system gives
// their keys anew to strangers: neither side ever sees a value that it did not store.
TEST(Stress, ReadersAndStrangersSurviveTheSweep) {
    constexpr uint32_t sweeps = 100;
    std::atomic<uint32_t> ends{0};
    together(6, [&](int number) {
        for (uint32_t sweep = 0; number >= 4 && sweep < sweeps; ++sweep) {
            wait_for(start_thread(add_one, &ends));
        }
        while (ends != 2 * sweeps) {
            pthread_key_t key{};
            const uint32_t index = oruTlsAlloc();
            ASSERT_EQ(pthread_key_create(&key, nullptr), 0);
            pthread_setspecific(key, &key);
            for (uint32_t i = 0; i < 4; ++i) {
                const void* value = oruTlsGetValue(i);
                EXPECT_TRUE(value == nullptr || value == &number);
                oruTlsSetValue(i, &number);
            }
            oruTlsFree(index);
            EXPECT_EQ(pthread_getspecific(key), &key);
            pthread_key_delete(key);
        }
    });
    free_tls_indices_of_process();
}
