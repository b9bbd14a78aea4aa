// Many threads on one lock. Counts beside the lock prove that nobody is inside who should not be; a word
// without any protection of its own lets ThreadSanitizer prove the same of memory.
#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <random>
#include <vector>

#include "locks/peers.h"
#include "vlrcomn/sync.h"

namespace {

using namespace locks;

class Arena {
public:
    // Takes the lock in a mode of chance and checks who else is inside.
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
            ++readers_;
            EXPECT_EQ(writers_, 0);
            read_and_leave();
        }
    }
    void expect_left_in_order() {
        EXPECT_EQ(value_, writes_);
        EXPECT_EQ(lock->count, 0);
        EXPECT_EQ(lock->owner, ORSO_NO_THREAD);
        EXPECT_EQ(queued(lock), 0);
    }

    const Lock lock;

private:
    static int count_news(uintptr_t arena, uint32_t event, uintptr_t, uint32_t) {
        auto& self = *reinterpret_cast<Arena*>(arena);
        EXPECT_TRUE(event != ORSO_NOTIFY_FREE || self.writers_ + self.readers_ == 0);
        return ++self.news_ % 3;
    }
    uintptr_t address() { return reinterpret_cast<uintptr_t>(this); }

    void write(unsigned long then) {
        EXPECT_EQ(writers_++, 0);
        EXPECT_EQ(readers_, 0);
        ++value_;
        sched_yield();  // lets others run into the held lock
        ++writes_;
        if (then == 0) {
            EXPECT_EQ(orSO_SELock(lock, value_ % 2 == 0, 1), 1) << "recursive";
            orSO_SELockRelease(lock);
        }
        EXPECT_EQ(writers_--, 1);
        if (then == 1) {
            ++readers_;
            orSO_SELockExclusiveToShared(lock);
            read_and_leave();
        } else {
            orSO_SELockRelease(lock);
        }
    }
    void read_and_leave() {
        sched_yield();
        EXPECT_EQ(value_, writes_);
        --readers_;
        orSO_SELockRelease(lock);
    }

    uint32_t value_ = 0;  // guarded by the lock and nothing else
    std::atomic<uint32_t> writes_{0};
    std::atomic<int> writers_{0}, readers_{0}, news_{0};
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
    arena.expect_left_in_order();
}

}  // namespace
