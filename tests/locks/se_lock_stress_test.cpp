// Many threads on one lock. Counts beside the lock prove that nobody is inside who should not be; a word
// without any protection of its own lets ThreadSanitizer prove the same of memory.
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

#include "locks/peers.h"
#include "vlrcomn/sync.h"

namespace {

using namespace locks;

class Arena {
public:
    explicit Arena(orSELock* lock) : lock_(lock) {}

    // Does `rounds` random things; `seed` makes the choice.
    void play(unsigned seed, int rounds) {
        std::mt19937 random(seed);
        for (int round = 0; round < rounds; ++round) {
            const auto choice = random();
            const int wait = choice % 8 != 0;
            switch (choice / 8 % 4) {
                case 0:
                    if (orSO_SELockExclusive(lock_, wait) == 1) {
                        write(choice / 32);
                    }
                    break;
                case 1:
                    if (orSO_SELockExclusiveNotify(lock_, count_news, address(), seed) == 1) {
                        write(choice / 32);
                    } else if (choice / 32 % 2 == 0) {
                        orSO_SELockExclusiveUnnotify(lock_, count_news, address(), seed);
                    }
                    break;
                case 2:
                    if (orSO_SELockSharedStarveExclusive(lock_, wait) == 1) {
                        read();
                    }
                    break;
                default:
                    if (orSO_SELockSharedWaitForExclusive(lock_, wait) == 1) {
                        read();
                    }
            }
        }
    }

    uint64_t written() const { return value_; }
    int64_t writes() const { return writes_; }
    int news() const { return news_; }

private:
    static int count_news(uintptr_t arena, uint32_t event, uintptr_t, uint32_t) {
        auto& self = *reinterpret_cast<Arena*>(arena);
        if (event == ORSO_NOTIFY_FREE) {
            EXPECT_EQ(self.readers_ + self.writers_, 0);
            ++self.news_;
        }
        return self.news_ % 3;
    }
    uintptr_t address() { return reinterpret_cast<uintptr_t>(this); }

    void write(unsigned long choice) {
        EXPECT_EQ(writers_++, 0);
        EXPECT_EQ(readers_, 0);
        ++value_;
        sched_yield();
        ++writes_;
        if (choice % 4 == 0) {
            EXPECT_EQ(orSO_SELock(lock_, choice / 4 % 2 == 0, 1), 1);
            ++value_;
            ++writes_;
            orSO_SELockRelease(lock_);
        }
        EXPECT_EQ(writers_--, 1);
        if (choice % 4 == 1) {
            ++readers_;
            orSO_SELockExclusiveToShared(lock_);
            read_only();
            --readers_;
        }
        orSO_SELockRelease(lock_);
    }
    void read() {
        ++readers_;
        EXPECT_EQ(writers_, 0);
        read_only();
        --readers_;
        orSO_SELockRelease(lock_);
    }
    // Lets others run into the held lock.
    void read_only() {
        sched_yield();
        EXPECT_EQ(value_, static_cast<uint64_t>(writes_));
    }

    orSELock* lock_;
    uint64_t value_ = 0;  // guarded by the lock and nothing else
    std::atomic<int64_t> writes_{0};
    std::atomic<int> writers_{0}, readers_{0}, news_{0};
};

class SELockStress : public testing::TestWithParam<unsigned> {};

TEST_P(SELockStress, ExcludesAndLosesNobodyUnderSpuriousWakeUps) {
    const unsigned thread_count = GetParam();
    constexpr int kRoundsInAll = 8000;
    const Registry registry;
    const Lock lock;
    Arena arena(lock);
    std::vector<std::unique_ptr<Peer>> peers;
    std::vector<oruHandle> events;
    for (unsigned number = 0; number < thread_count; ++number) {
        peers.push_back(std::make_unique<Peer>());
        events.push_back(reinterpret_cast<oruHandle>(peers.back()->identity()));
    }
    std::atomic<bool> over{false};
    std::thread trouble([&] {
        for (size_t turn = 0; !over; ++turn) {
            oruSetEvent(events[turn % events.size()]);
            sched_yield();
        }
    });
    for (unsigned number = 0; number < thread_count; ++number) {
        peers[number]->start([&, number] {
            arena.play(1000 + number, kRoundsInAll / static_cast<int>(thread_count));
        });
    }
    for (const auto& peer : peers) {
        peer->finish();
    }
    over = true;
    trouble.join();
    EXPECT_EQ(arena.written(), static_cast<uint64_t>(arena.writes()));
    EXPECT_EQ(lock->count, 0);
    EXPECT_EQ(lock->owner, ORSO_NO_THREAD);
    EXPECT_EQ(length(lock->writers) + length(lock->shared_waiters), 0);
    RecordProperty("notifications", arena.news());
}
INSTANTIATE_TEST_SUITE_P(Threads, SELockStress, testing::Values(2, 3, 4, 8, 16));

}  // namespace
