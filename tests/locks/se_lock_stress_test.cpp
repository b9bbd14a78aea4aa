// Many threads on one lock. Two counts that differ while somebody writes prove that nobody is inside who
// should not be; as one of them has no protection of its own, ThreadSanitizer proves the same of memory.
#include <gtest/gtest.h>

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
        const Mode mode = modes[choice / 8 % 4];
        if (mode(lock, choice % 8 != 0) != 1) {
            return;
        }
        if (mode == exclusive) {
            EXPECT_EQ(value, writes);
            ++value;
            sched_yield();  // lets others run into the held lock
            ++writes;
            if (choice / 32 % 2 == 0) {
                orSO_SELockExclusiveToShared(lock);
            }
        }
        EXPECT_EQ(value, writes);
        sched_yield();
        EXPECT_EQ(value, writes);
        orSO_SELockRelease(lock);
    }

    static constexpr Mode modes[] = {exclusive, exclusive, shared_past_writers,
                                     shared_behind_writers};
    const Lock lock;
    uint32_t value = 0;  // guarded by the lock and nothing else
    std::atomic<uint32_t> writes{0};
};

TEST(SELockStress, ExcludesAndLosesNobodyUnderSpuriousWakeUps) {
    for (const unsigned threads : {2u, 4u, 16u}) {
        SCOPED_TRACE(threads);
        const Registry registry;
        Arena arena;
        std::deque<Peer> peers(threads);
        std::vector<oruHandle> events;
        for (Peer& peer : peers) {
            peer.run([&] { events.push_back(reinterpret_cast<oruHandle>(orSO_GetThread())); });
        }
        unsigned seed = 1000;
        for (Peer& peer : peers) {
            peer.start([&, random = std::mt19937(seed++)]() mutable {
                for (int round = 0; round < 1000; ++round) {
                    const auto choice = random();
                    oruSetEvent(events[choice % threads]);  // somebody's spurious wake-up
                    arena.play(choice);
                }
            });
        }
        for (Peer& peer : peers) {
            peer.finish();
        }
        EXPECT_EQ(arena.value, arena.writes);
        EXPECT_EQ(arena.lock->count, 0);
        EXPECT_EQ(queued(arena.lock), 0);
    }
}

}  // namespace
