// Many threads at once. Every test counts what must hold exactly and ends by itself; no sleep stands
// for synchronisation.
#include <atomic>
#include <thread>
#include <vector>

#include "portability/tls_index.h"
#include "sync_support.h"

using namespace sync_test;

namespace {

// Runs `body(number)` on `count` threads that start together.
template <typename Body>
void together(int count, Body body) {
    const Handle go = make_event();
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back([&, number] {
            wait_for(go);
            body(number);
        });
    }
    EXPECT_EQ(oruSetEvent(go.get()), 1);
    for (auto& thread : threads) {
        thread.join();
    }
}

uint32_t add_one(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return 0;
}

TEST(Stress, ManyWaitersShareOneMutex) {
    constexpr int threads = 16, rounds = 150;
    const Handle mutex = make_mutex();
    int guarded = 0;  // no atomic: the mutex is all that protects it
    together(threads, [&](int number) {
        for (int round = 0; round < rounds; ++round) {
            // Every third thread gives up now and then; a failed or late wait must not own it.
            const auto limit = number % 3 == 0 ? static_cast<uint32_t>(round % 3) : ORU_INFINITE;
            while (wait_for(mutex, limit) != ORU_WAIT_SIGNALLED) {
            }
            ++guarded;
            if (round % 4 == 0) {
                sched_yield();  // lets the others queue up
            }
            EXPECT_EQ(oruReleaseMutex(mutex.get()), 1);
        }
    });
    EXPECT_EQ(guarded, threads * rounds);
    EXPECT_EQ(wait_for(mutex, 0), ORU_WAIT_SIGNALLED);
}

TEST(Stress, ThreadsEndWhileTheyAreWaitedForAndClosed) {
    constexpr int starters = 6, rounds = 400;
    std::atomic<int> ran{0};
    together(starters, [&](int number) {
        for (int round = 0; round < rounds; ++round) {
            Handle thread;
            while ((thread = start_thread(add_one, &ran)) == nullptr) {
                sched_yield();  // the system's bound on threads
            }
            // Waits; or sees the end as early as can be, before the broadcast; or closes at once.
            if (number % 3 == 0) {
                EXPECT_EQ(wait_for(thread), ORU_WAIT_SIGNALLED);
            }
            while (number % 3 == 1 && wait_for(thread, 0) != ORU_WAIT_SIGNALLED) {
                sched_yield();
            }
        }
    });
    while (ran != starters * rounds) {
        sched_yield();
    }
}

TEST(Stress, InterlockedOperationsLoseNothing) {
    int32_t taken = 0, guarded = 0, counter = 0;
    together(4, [&](int) {
        for (int round = 0; round < 100'000; ++round) {
            oruInterlockedIncrement(&counter);
            while (oruInterlockedExchange(&taken, 1) != 0) {
                sched_yield();
            }
            ++guarded;
            oruInterlockedExchange(&taken, 0);
        }
    });
    EXPECT_EQ(counter, 400'000);
    EXPECT_EQ(guarded, 400'000);
}

// Indices are swept, by two ends at once, while others read and write through them, and the system gives
// their keys anew to strangers: neither side ever sees a value that it did not store.
TEST(Stress, ReadersAndStrangersSurviveTheSweep) {
    constexpr int sweeps = 100;
    std::atomic<int> ends{0};
    together(6, [&](int number) {
        int mine = number;
        if (number >= 4) {
            for (int sweep = 0; sweep < sweeps; ++sweep) {
                wait_for(start_thread(add_one, &ends));
            }
            return;
        }
        while (ends != 2 * sweeps) {
            pthread_key_t key{};
            const uint32_t index = oruTlsAlloc();
            ASSERT_EQ(pthread_key_create(&key, nullptr), 0);
            pthread_setspecific(key, &key);
            for (uint32_t i = 0; i < 4; ++i) {
                const void* value = oruTlsGetValue(i);
                EXPECT_TRUE(value == nullptr || value == &mine);
                oruTlsSetValue(i, &mine);
            }
            oruTlsFree(index);
            EXPECT_EQ(pthread_getspecific(key), &key);
            pthread_key_delete(key);
        }
    });
    wait_for(start_thread(add_one, &ends));
    for (const auto& word : pTlsKeyTable) {
        ASSERT_EQ(word, 0u);
    }
}

}  // namespace
