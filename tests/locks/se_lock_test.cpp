#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "locks/peers.h"
#include "portability/handle_object.h"
#include "vlrcomn/sync.h"

namespace {

using namespace locks;
using namespace velora_com::qel::lists;

class SELock : public testing::Test {
protected:
    // Who holds the lock, looked at from outside.
    std::string state() {
        const SpinGuard guard(lock_->spin);
        if (lock_->owner != ORSO_NO_THREAD) {
            return "exclusive " + std::to_string(lock_->count);
        }
        return lock_->count == 0 ? "free" : "shared " + std::to_string(lock_->count);
    }

    Registry registry_;
    Lock lock_;
};

TEST_F(SELock, IsRecursiveForItsOwner) {
    Peer other;
    EXPECT_EQ(lock_->last_transition, kCreated);
    for (int depth = 1; depth <= 3; ++depth) {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        EXPECT_EQ(lock_->count, depth);
    }
    EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 1);
    EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 1);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0), 1);
    EXPECT_EQ(lock_->last_transition, kExclusiveGranted) << "only the first grant counts";
    EXPECT_EQ(lock_->owner, orSO_GetThread());
    EXPECT_EQ(lock_->owner_process, static_cast<uint32_t>(getpid()));
    for (int depth = 6; depth > 0; --depth) {
        EXPECT_EQ(state(), "exclusive " + std::to_string(depth));
        other.run([&] { EXPECT_EQ(orSO_SELockExclusive(lock_, 0), 0); });
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "free");
    EXPECT_EQ(lock_->last_transition, kReleasedToFree);
    other.run([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 0), 1);
        orSO_SELockRelease(lock_);
    });
}

using Operation = std::function<int(orSELock*)>;
int refuse_news(uintptr_t, uint32_t, uintptr_t, uint32_t) {
    return 1;
}

TEST_F(SELock, GrantsAtOnceWhatTheModeAllows) {
    struct Row {
        const char* held;
        bool exclusive, notify, shared_behind, shared_past;
    };
    const Row rows[] = {
        {"free", true, true, true, true},
        {"shared", false, false, true, true},
        {"shared, a writer queued", false, false, false, true},
        {"exclusive", false, false, false, false},
    };
    Peer holder, writer;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.held);
        const std::string held = row.held;
        holder.run([&] {
            if (held != "free") {
                orSO_SELock(lock_, held == "exclusive" ? 1 : 0, 1);
            }
        });
        if (held == "shared, a writer queued") {
            writer.start([&] {
                orSO_SELockExclusive(lock_, 1);
                orSO_SELockRelease(lock_);
            });
            until_queued(lock_, 1, 0);
        }
        const std::pair<bool, Operation> operations[] = {
            {row.exclusive, [](orSELock* lock) { return orSO_SELockExclusive(lock, 0); }},
            {row.exclusive, [](orSELock* lock) { return orSO_SELock(lock, 1, 2); }},
            {row.notify,
             [](orSELock* lock) { return orSO_SELockExclusiveNotify(lock, refuse_news, 0, 0); }},
            {row.shared_behind,
             [](orSELock* lock) { return orSO_SELockSharedWaitForExclusive(lock, 0); }},
            {row.shared_behind, [](orSELock* lock) { return orSO_SELock(lock, 2, 0); }},
            {row.shared_past,
             [](orSELock* lock) { return orSO_SELockSharedStarveExclusive(lock, 0); }},
        };
        int number = 0;
        for (const auto& [granted, operation] : operations) {
            SCOPED_TRACE(number++);
            const std::string before = state();
            ASSERT_EQ(operation(lock_), granted ? 1 : 0);
            if (granted) {
                orSO_SELockRelease(lock_);
            }
            EXPECT_EQ(state(), before);
        }
        if (held != "free") {
            holder.run([&] { orSO_SELockRelease(lock_); });
        }
        writer.finish();
    }
}

TEST_F(SELock, HandsOverToTheLatestWriterFirstAndThenToAllReaders) {
    std::vector<std::string> order;  // guarded by the lock
    Peer first, second, reader, other_reader;
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    const auto write = [&](const char* name) {
        return [&, name] {
            EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
            EXPECT_EQ(lock_->owner, orSO_GetThread());
            EXPECT_EQ(lock_->last_transition, kHandedToWriter);
            order.emplace_back(name);
            orSO_SELockRelease(lock_);
        };
    };
    first.start(write("first"));
    until_queued(lock_, 1, 0);
    // Readers keep the lock until both are in.
    reader.start([&] { EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 1); });
    until_queued(lock_, 1, 1);
    other_reader.start([&] { EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 1); });
    until_queued(lock_, 1, 2);
    second.start(write("second"));
    until_queued(lock_, 2, 2);

    orSO_SELockRelease(lock_);
    for (Peer* peer : {&first, &second, &reader, &other_reader}) {
        peer->finish();
    }
    EXPECT_EQ(order, (std::vector<std::string>{"second", "first"}));
    EXPECT_EQ(state(), "shared 2");
    reader.run([&] { orSO_SELockRelease(lock_); });
    other_reader.run([&] { orSO_SELockRelease(lock_); });
    EXPECT_EQ(state(), "free");
}

TEST_F(SELock, DowngradeLetsEveryReaderInAndKeepsTheDepth) {
    std::vector<std::unique_ptr<Peer>> readers;
    Peer writer;
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    for (int count = 1; count <= 3; ++count) {
        readers.push_back(std::make_unique<Peer>());
        readers.back()->start([&] { EXPECT_EQ(orSO_SELock(lock_, 0, 1), 1); });
        until_queued(lock_, 0, count);
    }
    writer.start([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        orSO_SELockRelease(lock_);
    });
    until_queued(lock_, 1, 3);
    orSO_SELockExclusiveToShared(lock_);
    EXPECT_EQ(lock_->last_transition, kDowngraded);
    for (const auto& reader : readers) {
        reader->finish();
    }
    EXPECT_EQ(state(), "shared 5");
    EXPECT_TRUE(writer.is_busy());
    orSO_SELockRelease(lock_);
    orSO_SELockRelease(lock_);
    for (const auto& reader : readers) {
        EXPECT_TRUE(writer.is_busy());
        reader->run([&] { orSO_SELockRelease(lock_); });
    }
    writer.finish();
    EXPECT_EQ(state(), "free");
}

TEST_F(SELock, ASpuriousWakeUpIsNoGrant) {
    Peer waiter;
    const auto event = reinterpret_cast<oruHandle>(waiter.identity());
    for (const int exclusive : {0, 1}) {
        ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        waiter.start([&, exclusive] {
            EXPECT_EQ(orSO_SELock(lock_, exclusive, 1), 1);
            orSO_SELockRelease(lock_);
        });
        until_queued(lock_, exclusive, 1 - exclusive);
        for (int wake_up = 0; wake_up < 50; ++wake_up) {
            oruSetEvent(event);
            // The waiter resets its event when it looks.
            until(lock_, [&] { return event->bSignalled == 0; });
            until_queued(lock_, exclusive, 1 - exclusive);
        }
        EXPECT_TRUE(waiter.is_busy());
        orSO_SELockRelease(lock_);
        waiter.finish();
    }
    EXPECT_EQ(state(), "free");
}

// Answers to notifications, and a record of them.
std::vector<std::string> news;
int served = 0;
int hear(uintptr_t first, uint32_t event, uintptr_t second, uint32_t zero) {
    EXPECT_EQ(zero, 0u);
    news.push_back(std::to_string(first) + (event == ORSO_NOTIFY_FREE        ? " free"
                                            : event == ORSO_NOTIFY_WITHDRAWN ? " withdrawn"
                                                                             : " ?"));
    return static_cast<int>(second) == 7 ? 1 : served;
}

TEST_F(SELock, NotificationsAreCalledLatestFirstUpToTheFirstServed) {
    constexpr uintptr_t kRefuses = 7;
    const auto take_news = [] { return std::exchange(news, {}); };
    using News = std::vector<std::string>;
    Peer other;
    other.run([&] { orSO_SELockExclusive(lock_, 1); });
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 1, 0), 0) << "nothing to register";
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 1, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 2, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 3, kRefuses), 0);
    EXPECT_EQ(take_news(), News{});
    const auto cycle = [&] {
        other.run([&] {
            orSO_SELockExclusive(lock_, 1);
            orSO_SELockRelease(lock_);
        });
        return take_news();
    };
    other.run([&] { orSO_SELockRelease(lock_); });
    EXPECT_EQ(take_news(), (News{"3 free", "2 free"}));
    EXPECT_EQ(cycle(), (News{"3 free", "1 free"}));
    EXPECT_EQ(cycle(), (News{"3 free"}));

    // A waiter comes before the news.
    ASSERT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 4, 0), 1);
    EXPECT_EQ(lock_->last_transition, kGrantedByNotify);
    other.start([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        EXPECT_EQ(news, News{});
        orSO_SELockRelease(lock_);
    });
    until_queued(lock_, 1, 0);
    orSO_SELockRelease(lock_);
    other.finish();
    EXPECT_EQ(take_news(), (News{"3 free"}));

    // Withdrawing asks each equal registration until one agrees.
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, refuse_news, 3, kRefuses), 0);
    EXPECT_EQ(take_news(), News{});
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, kRefuses), 0);
    EXPECT_EQ(take_news(), (News{"3 withdrawn"}));
    other.run([&] { orSO_SELockExclusive(lock_, 1); });
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 5, 0), 1);
    EXPECT_EQ(take_news(), (News{"5 withdrawn"}));
    other.run([&] { orSO_SELockRelease(lock_); });
    EXPECT_EQ(take_news(), (News{"5 free"}));
    // The refusing one is still there; releasing the lock's record frees it without a call.
}

TEST_F(SELock, AThreadThatIsNotAttachedNeverOwnsAndNeverWaits) {
    std::thread([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        EXPECT_EQ(state(), "shared 1");
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 0) << "all-ones is nobody";
        EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 1);
        orSO_SELockRelease(lock_);
        orSO_SELockRelease(lock_);
    }).join();
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    std::thread([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 0);
        EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 0);
        EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 0);
    }).join();
    EXPECT_EQ(length(lock_->writers) + length(lock_->shared_waiters), 0);
    orSO_SELockRelease(lock_);
}

TEST_F(SELock, NullDoesNothing) {
    EXPECT_EQ(orSO_SELockCreate(nullptr), ORU_FAILURE);
    orSO_Release(nullptr);
    EXPECT_EQ(orSO_SELock(nullptr, 1, 1), 0);
    EXPECT_EQ(orSO_SELockExclusive(nullptr, 1), 0);
    EXPECT_EQ(orSO_SELockSharedStarveExclusive(nullptr, 1), 0);
    EXPECT_EQ(orSO_SELockSharedWaitForExclusive(nullptr, 1), 0);
    orSO_SELockExclusiveToShared(nullptr);
    orSO_SELockRelease(nullptr);
    EXPECT_EQ(orSO_SELockExclusiveNotify(nullptr, refuse_news, 0, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(nullptr, refuse_news, 0, 0), 0);
    EXPECT_EQ(orSL_Get(nullptr), 0);
    orSL_Release(nullptr);
}

TEST_F(SELock, AForkedChildRecordsItsOwnProcess) {
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    orSO_SELockRelease(lock_);
    const pid_t child = fork();
    if (child == 0) {
        const bool granted = orSO_SELockExclusive(lock_, 0) == 1;
        _exit(granted && lock_->owner_process == static_cast<uint32_t>(getpid()) ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(lock_->owner_process, static_cast<uint32_t>(getpid()));
}

}  // namespace
