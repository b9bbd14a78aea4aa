// Many threads on one lock. Counts beside the lock prove that nobody is inside who should not be; a word
// without any protection of its own lets ThreadSanitizer prove the same of memory.
#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <random>
#include <thread>
#include <vector>

#include "locks/peers.h"
#include "vlrcomn/sync.h"

namespace {

struct Arena {
    // Takes the lock in a mode of chance and checks who else is inside.
    void play(std::mt19937::result_type choice) {
        const int wait = choice % 8 != 0;
        const auto mode = choice / 8 % 4, then = choice / 32 % 4;
        if (mode == 1 && orSO_SELockExclusiveNotify(lock, count_news, address(), 0) != 1) {
            if (then < 2) {
                orSO_SELockExclusiveUnnotify(lock, count_news, address(), 0);
            }
        } else if (mode == 1 || (mode == 0 && orSO_SELockExclusive(lock, wait) == 1)) {
            write(then);
        } else if ((mode == 2 && orSO_SELockSharedStarveExclusive(lock, wait) == 1) ||
                   (mode == 3 && orSO_SELockSharedWaitForExclusive(lock, wait) == 1)) {
            read();
        }
    }

    const locks::Lock lock;
    uint32_t value = 0;  // guarded by the lock and nothing else
    std::atomic<uint32_t> writes{0};
    std::atomic<int> writers{0}, readers{0}, news{0};

private:
    static int count_news(uintptr_t arena, uint32_t event, uintptr_t, uint32_t) {
        auto& self = *reinterpret_cast<Arena*>(arena);
        if (event == ORSO_NOTIFY_FREE) {
            EXPECT_EQ(self.writers + self.readers, 0);
        }
        return ++self.news % 3;
    }
    uintptr_t address() { return reinterpret_cast<uintptr_t>(this); }

    void write(unsigned long then) {
        EXPECT_EQ(writers++, 0);
        EXPECT_EQ(readers, 0);
        ++value;
        sched_yield();  // lets others run into the held lock
        ++writes;
        if (then == 0) {
            EXPECT_EQ(orSO_SELock(lock, value % 2 == 0, 1), 1) << "recursive";
            orSO_SELockRelease(lock);
        }
        EXPECT_EQ(writers--, 1);
        if (then == 1) {
            ++readers;
            orSO_SELockExclusiveToShared(lock);
            read_and_leave();
        } else {
            orSO_SELockRelease(lock);
        }
    }
    void read() {
        ++readers;
        EXPECT_EQ(writers, 0);
        read_and_leave();
    }
    void read_and_leave() {
        sched_yield();
        EXPECT_EQ(value, writes);
        --readers;
        orSO_SELockRelease(lock);
    }
};

class SELockStress : public testing::TestWithParam<int> {};

TEST_P(SELockStress, ExcludesAndLosesNobodyUnderSpuriousWakeUps) {
    const locks::Registry registry;
    Arena arena;
    std::deque<locks::Peer> peers(static_cast<size_t>(GetParam()));
    std::vector<oruHandle> events;
    for (locks::Peer& peer : peers) {
        peer.run([&] { events.push_back(reinterpret_cast<oruHandle>(orSO_GetThread())); });
    }
    std::atomic<bool> over{false};
    std::thread trouble([&] {
        for (size_t turn = 0; !over; ++turn) {
            oruSetEvent(events[turn % events.size()]);
            sched_yield();
        }
    });
    unsigned seed = 1000;
    for (locks::Peer& peer : peers) {
        peer.start([&arena, random = std::mt19937(seed++)]() mutable {
            for (int round = 0; round < 8000 / GetParam(); ++round) {
                arena.play(random());
            }
        });
    }
    for (locks::Peer& peer : peers) {
        peer.finish();
    }
    over = true;
    trouble.join();
    EXPECT_EQ(arena.value, arena.writes);
    EXPECT_EQ(arena.lock->count, 0);
    EXPECT_EQ(arena.lock->owner, ORSO_NO_THREAD);
    EXPECT_EQ(locks::length(arena.lock->writers) + locks::length(arena.lock->shared_waiters), 0);
}
INSTANTIATE_TEST_SUITE_P(Threads, SELockStress, testing::Values(2, 3, 4, 8, 16));

}  // namespace
