// Many threads on one lock. Two counts that differ while somebody writes prove that nobody is inside who
// should not be; as one of them has no protection of its own, ThreadSanitizer proves the same of memory.
#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <random>
#include <vector>

#include "locks/peers.h"
#include "vlrcomn/sync.h"

namespace {

using namespace locks;

struct Arena {
    // Takes the lock in a mode of chance and looks for others inside.
    void play(std::mt19937::result_type choice) {
        const int wait = choice % 8 != 0;
        const auto mode = choice / 8 % 4, then = choice / 32 % 4;
        if (mode == 1 && orSO_SELockExclusiveNotify(lock, count_news, address(), 0) != 1) {
            if (then < 2) {
                orSO_SELockExclusiveUnnotify(lock, count_news, address(), 0);
            }
        } else if (mode == 1 || (mode == 0 && exclusive(lock, wait) == 1)) {
            write(then);
        } else if ((mode == 2 && shared_past_writers(lock, wait) == 1) ||
                   (mode == 3 && shared_behind_writers(lock, wait) == 1)) {
            read_and_release();
        }
    }
    void write(unsigned long then) {
        EXPECT_EQ(value, writes);
        ++value;
        sched_yield();  // lets others run into the held lock
        ++writes;
        if (then == 0) {
            EXPECT_EQ(orSO_SELock(lock, value % 2 == 0, 1), 1) << "recursive";
            orSO_SELockRelease(lock);
        }
        if (then == 1) {
            orSO_SELockExclusiveToShared(lock);
        }
        read_and_release();
    }
    void read_and_release() {
        EXPECT_EQ(value, writes);
        sched_yield();
        EXPECT_EQ(value, writes);
        orSO_SELockRelease(lock);
    }
    static int count_news(uintptr_t arena, uint32_t, uintptr_t, uint32_t) {
        return ++reinterpret_cast<Arena*>(arena)->news % 3;
    }
    uintptr_t address() { return reinterpret_cast<uintptr_t>(this); }

    const Lock lock;
    uint32_t value = 0;  // guarded by the lock and nothing else
    std::atomic<uint32_t> writes{0};
    int news = 0;  // guarded by the spin word
};

class SELockStress : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Threads, SELockStress, testing::Values(2, 3, 4, 8, 16));

TEST_P(SELockStress, ExcludesAndLosesNobodyUnderSpuriousWakeUps) {
    const Registry registry;
    Arena arena;
    std::deque<Peer> peers(static_cast<size_t>(GetParam()));
    std::vector<oruHandle> events;
    for (Peer& peer : peers) {
        peer.run([&] { events.push_back(reinterpret_cast<oruHandle>(orSO_GetThread())); });
    }
    unsigned seed = 1000;
    for (Peer& peer : peers) {
        peer.start([&, random = std::mt19937(seed++)]() mutable {
            for (int round = 0; round < 8000 / GetParam(); ++round) {
                const auto choice = random();
                oruSetEvent(events[choice % events.size()]);  // somebody's spurious wake-up
                arena.play(choice);
            }
        });
    }
    for (Peer& peer : peers) {
        peer.finish();
    }
    EXPECT_EQ(arena.value, arena.writes);
    EXPECT_EQ(arena.lock->count, 0);
    EXPECT_EQ(arena.lock->owner, ORSO_NO_THREAD);
    EXPECT_EQ(queued(arena.lock), 0);
}

}  // namespace
