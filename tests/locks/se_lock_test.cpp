#include "locks/peers.h"
#include "support/process_id.h"
#include "sync/tls_index.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

using namespace locks;
using namespace velora_com::qel::locks;
namespace support = velora_com::qel::support;

struct SELock : testing::Test {
    SELock() { EXPECT_EQ(orSO_SELockCreate(&lock_), ORU_SUCCESS); }
    ~SELock() override { orSO_Release(lock_); }

    // Who holds the lock, looked at from outside.
    uint32_t field(uint32_t orSELock::*member) {
        const SpinGuard guard(lock_->spin);
        return lock_->*member;
    }
    std::string state() {
        const SpinGuard guard(lock_->spin);
        const char* const mode = lock_->owner != ORSO_NO_THREAD ? "exclusive " : "shared ";
        return lock_->count == 0 ? "free" : mode + std::to_string(lock_->count);
    }
    // Which modes the calling thread would be granted at once.
    std::string open_to() {
        std::string modes;
        for (const Mode mode : {exclusive, shared_behind_writers, shared_past_writers}) {
            const bool granted = mode(lock_, 0) == 1;
            modes += granted ? '+' : '-';
            orSO_SELockRelease(granted ? lock_ : nullptr);
        }
        return modes;
    }

    const Registry registry_;
    orSELock* lock_ = nullptr;
};

TEST_F(SELock, GrantsAtOnceWhatTheModeAllows) {
    Peer holder, writer;
    EXPECT_EQ(open_to(), "+++");
    holder.run([&] { EXPECT_EQ(orSO_SELock(lock_, 2, 1), 1); });
    EXPECT_EQ(open_to(), "-++");
    EXPECT_EQ(orSO_SELock(lock_, 1, 2), 0);
    EXPECT_FALSE(exclusive(nullptr, 1) || shared_behind_writers(nullptr, 1) ||
                 shared_past_writers(nullptr, 1) ||
                 orSO_SELockExclusiveNotify(nullptr, nullptr, 0, 0) ||
                 orSO_SELockExclusiveUnnotify(nullptr, nullptr, 0, 0));
    orSO_SELockExclusiveToShared(nullptr);
    EXPECT_EQ(orSO_SELockCreate(nullptr), ORU_FAILURE);
    queue(writer, lock_, exclusive);
    EXPECT_EQ(open_to(), "--+");
    orSO_SELockRelease(lock_);
    EXPECT_EQ(open_to(), "---");
    EXPECT_EQ(field(&orSELock::owner_process), static_cast<uint32_t>(getpid()));
    // Its owner may do everything, and has to release each hold.
    writer.run([&] {
        EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0), 1);
        EXPECT_EQ(shared_behind_writers(lock_, 1), 1);
        EXPECT_EQ(open_to(), "+++");
    });
    for (int depth = 3; depth > 0; --depth) {
        EXPECT_EQ(state(), "exclusive " + std::to_string(depth));
        EXPECT_EQ(open_to(), "---");
        orSO_SELockRelease(lock_);
    }
    // Without identity nobody owns or waits: all-ones is no owner.
    std::thread([&] {
        EXPECT_EQ(exclusive(lock_, 1), 1);
        EXPECT_EQ(state(), "shared 1");
        EXPECT_EQ(exclusive(lock_, 1), 0);
    }).join();
}

TEST_F(SELock, LetsReadersInAtADowngradeAndElseTheLatestWriterFirst) {
    Peer first, second, reader, other_reader;
    ASSERT_EQ(exclusive(lock_, 1), 1);
    queue(first, lock_, exclusive);
    queue(reader, lock_, shared_behind_writers);
    queue(other_reader, lock_, shared_past_writers);
    queue(second, lock_, exclusive);
    orSO_SELockExclusiveToShared(lock_);
    EXPECT_EQ(field(&orSELock::last_transition), Transition::downgraded);
    EXPECT_EQ(state(), "shared 3");
    for (int readers = 3; readers > 0; --readers) {
        orSO_SELockRelease(lock_);
    }
    queue(reader, lock_, shared_behind_writers);
    queue(other_reader, lock_, shared_behind_writers);
    for (Peer* writer : {&second, &first}) {
        writer->finish();
        EXPECT_EQ(field(&orSELock::last_transition), Transition::handed_to_writer);
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "shared 2");
}

constexpr uintptr_t refuses = 7;
static std::string news;
static int hear(uintptr_t first, uint32_t event, uintptr_t second, uint32_t) {
    pthread_testcancel();
    news += std::to_string(first) + (event == ORSO_NOTIFY_FREE ? " free;" : " withdrawn;");
    return second == refuses ? 1 : 0;
}

TEST_F(SELock, NotificationsAreCalledLatestFirstUpToTheFirstServed) {
    Peer other;
    other.run([&] { exclusive(lock_, 1); });
    for (const uintptr_t number : {1u, 2u, 3u}) {
        EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, number, number == 3 ? refuses : 0), 0);
    }
    orSO_SELockRelease(lock_);
    EXPECT_EQ(std::exchange(news, {}), "3 free;2 free;");

    ASSERT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 4, 0), 1);
    queue(other, lock_, exclusive);
    orSO_SELockRelease(lock_);
    EXPECT_EQ(news, "") << "a waiter comes first";

    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, refuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 1, 0), 1);
    EXPECT_EQ(std::exchange(news, {}), "3 withdrawn;1 withdrawn;");

    // Even a cancelled thread hears its callback out. What refuses stays to the end.
    std::thread([this] {
        pthread_cancel(pthread_self());
        orSO_SELockRelease(lock_);
    }).join();
    EXPECT_EQ(std::exchange(news, {}), "3 free;");
}

TEST(ProcessId, IsKeptUntilAFork) {
    const auto is_kept = [] {
        const auto own = static_cast<uint32_t>(getpid());
        return support::process_id() == own && support::cached_process_id == own;
    };
    EXPECT_TRUE(is_kept());
    EXPECT_TRUE(holds_in_child(is_kept));
}

// The end of a layer-started thread frees the registry's index; attaching anew is the way on.
TEST(ThreadRegistry, AttachesAndDetachesAndSurvivesASweep) {
    EXPECT_EQ(orSO_ThreadAttach(), 0u) << "not before the process";
    for (const bool sweep : {true, false}) {
        ASSERT_GE(orSO_ProcessAttach(), 0);
        EXPECT_EQ(orSO_ThreadAttach(), 1u);
        const uintptr_t event = orSO_GetThread();
        orSO_ThreadDetachX();
        EXPECT_EQ(orSO_ThreadAttach(), event) << "only the first one gives 1";
        if (sweep) {
            velora_com::qel::sync::free_tls_indices_of_process();
        }
        EXPECT_EQ(orSO_ThreadAttachX(), sweep ? 0 : 1);
        EXPECT_EQ(oruCloseHandle(reinterpret_cast<oruHandle>(event)), 1) << "left open";
        // An index that others have got since is theirs.
        uint32_t index = sweep ? oruTlsAlloc() : ORU_TLS_OUT_OF_INDEXES;
        if (oruTlsSetValue(index, &index) == 1) {
            EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
            EXPECT_FALSE(orSO_ThreadAttach() || orSO_ThreadAttachX() || orSO_ProcessDetach());
            EXPECT_EQ(orSO_DbgGetThread(), 0u);
            EXPECT_EQ(oruTlsGetValue(index), &index);
        }
    }
    EXPECT_EQ(orSO_ThreadDetach(), 1) << "nothing to close is no failure";
    EXPECT_EQ(orSO_ProcessDetach(), 1);
}

// A cancelled waiter leaves the queue, or gives back what it is granted on its way out.
TEST_F(SELock, ACancelledWaiterHoldsNothing) {
    NEEDS_CANCELLED_WAITS;
    for (int round = 0; round < 150; ++round) {
        ASSERT_EQ(exclusive(lock_, 0), 1);
        std::deque<Peer> peers(3);
        for (Peer& peer : peers) {
            queue(peer, lock_, [](orSELock* lock, int wait) {
                const int granted = exclusive(lock, wait);
                orSO_SELockRelease(lock);
                pthread_testcancel();  // it came too late for the wait
                return granted;
            });
        }
        std::thread& leaver = peers[static_cast<size_t>(round % 3)].thread;
        pthread_cancel(leaver.native_handle());
        for (int turn = 0; turn < round / 8; ++turn) {
            sched_yield();
        }
        orSO_SELockRelease(lock_);
        leaver.join();
    }
}

// A writer that leaves lets the readers behind it in, unless something else still keeps them out.
TEST_F(SELock, ACancelledWriterLeavesTheReadersBehindItToTheLock) {
    NEEDS_CANCELLED_WAITS;
    const std::tuple<Mode, bool, const char*> cases[] = {{shared_past_writers, false, "shared 2"},
                                                         {shared_past_writers, true, "shared 1"},
                                                         {exclusive, false, "exclusive 1"}};
    for (const auto& [held, another_waits, expected] : cases) {
        ASSERT_EQ(held(lock_, 0), 1);
        std::deque<Peer> peers(3);
        if (another_waits) {
            queue(peers[0], lock_, exclusive);
        }
        queue(peers[1], lock_, exclusive);
        queue(peers[2], lock_, shared_behind_writers);
        pthread_cancel(peers[1].thread.native_handle());
        peers[1].thread.join();
        EXPECT_EQ(state(), expected);
        while (state() != "free") {
            orSO_SELockRelease(lock_);
        }
    }
}

// The processor's exchange and the one under the mutex may meet on one word.
TEST(SpinWord, ExcludesWhoeverExchanges) {
    constexpr int rounds = 200'000;
    int32_t spin = 0;
    int guarded = 0;
    together(2, [&](int through_mutex) {
        for (int round = 0; round < rounds; ++round) {
            if (through_mutex == 0) {
                orSL_Get(&spin);
            }
            while (through_mutex != 0 && oruInterlockedExchange(&spin, 1) != 0) {
            }
            ++guarded;
            orSL_Release(&spin);
        }
    });
    EXPECT_EQ(guarded, 2 * rounds);
}

// Two counts that differ while somebody writes prove that nobody is inside who should not be; as one of them
// has no protection of its own, ThreadSanitizer proves the same of memory.
TEST_F(SELock, ExcludesAndLosesNobodyUnderSpuriousWakeUps) {
    constexpr Mode modes[] = {exclusive, exclusive, shared_past_writers, shared_behind_writers};
    for (const unsigned threads : {2u, 4u, 16u}) {
        std::deque<Peer> peers(threads);
        std::vector<oruHandle> events;
        uint32_t value = 0;  // guarded by the lock and nothing else
        std::atomic<uint32_t> writes{0};
        const auto play = [&](auto choice) {
            oruSetEvent(events[choice % threads]);  // somebody's spurious wake-up
            const Mode mode = modes[choice / 16 % 4];
            if (mode(lock_, choice % 8 != 0) != 1) {
                return;
            }
            if (mode == exclusive) {
                EXPECT_EQ(value++, writes);
                sched_yield();  // lets others run into the held lock
                ++writes;
                if (choice / 64 % 2 == 0) {
                    orSO_SELockExclusiveToShared(lock_);
                }
            }
            sched_yield();
            EXPECT_EQ(value, writes);
            orSO_SELockRelease(lock_);
        };
        for (Peer& peer : peers) {
            peer.run([&] { events.push_back(reinterpret_cast<oruHandle>(orSO_GetThread())); });
        }
        unsigned seed = 1000;
        for (Peer& peer : peers) {
            peer.start([play, random = std::mt19937(seed++)]() mutable {
                for (int round = 0; round < 400; ++round) {
                    play(random());
                }
            });
        }
        for (Peer& peer : peers) {
            peer.finish();  // before the first of them gives up its event
        }
        EXPECT_EQ(value, writes);
        EXPECT_EQ(state(), "free");
    }
}
