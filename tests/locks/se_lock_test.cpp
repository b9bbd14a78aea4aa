#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "locks/peers.h"

namespace {

using namespace locks;
using namespace velora_com::qel::lists;

class SELock : public testing::Test {
protected:
    // Who holds the lock, looked at from outside.
    std::string state() {
        const SpinGuard guard(lock_->spin);
        const char* const mode = lock_->owner != ORSO_NO_THREAD ? "exclusive " : "shared ";
        return lock_->count == 0 ? "free" : mode + std::to_string(lock_->count);
    }

    const Registry registry_;
    const Lock lock_;
};

TEST_F(SELock, IsRecursiveForItsOwner) {
    Peer other;
    EXPECT_EQ(lock_->last_transition, kCreated);
    EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 1);
    EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 1);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0), 1);
    EXPECT_EQ(lock_->last_transition, kExclusiveGranted) << "only the first grant counts";
    EXPECT_EQ(lock_->owner, orSO_GetThread());
    EXPECT_EQ(lock_->owner_process, static_cast<uint32_t>(getpid()));
    for (int depth = 4; depth > 0; --depth) {
        EXPECT_EQ(state(), "exclusive " + std::to_string(depth));
        other.run([&] { EXPECT_EQ(orSO_SELockExclusive(lock_, 0), 0); });
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "free");
    EXPECT_EQ(lock_->last_transition, kReleasedToFree);
}

TEST_F(SELock, GrantsAtOnceWhatTheModeAllows) {
    struct Row {
        const char* before;
        int held;  // as orSO_SELock takes it, or -1
        bool writer_queued, exclusive, shared_behind, shared_past;
    };
    Peer holder, writer;
    for (const Row& row : {Row{"free", -1, false, true, true, true},
                           {"shared 1", 0, false, false, true, true},
                           {"shared 1", 0, true, false, false, true},
                           {"exclusive 1", 1, false, false, false, false}}) {
        SCOPED_TRACE(testing::Message() << row.before << row.writer_queued);
        if (row.held >= 0) {
            holder.run([&] { orSO_SELock(lock_, row.held, 1); });
        }
        if (row.writer_queued) {
            writer.start([&] {
                orSO_SELockExclusive(lock_, 1);
                orSO_SELockRelease(lock_);
            });
            until_queued(lock_, 1, 0);
        }
        const auto expect = [&](bool expected, int granted) {
            EXPECT_EQ(granted, expected ? 1 : 0);
            if (granted == 1) {
                orSO_SELockRelease(lock_);
            }
            EXPECT_EQ(state(), row.before);
        };
        expect(row.exclusive, orSO_SELockExclusive(lock_, 0));
        expect(row.exclusive, orSO_SELock(lock_, 1, 2));
        expect(row.exclusive, orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0));
        expect(row.shared_behind, orSO_SELockSharedWaitForExclusive(lock_, 0));
        expect(row.shared_behind, orSO_SELock(lock_, 2, 0));
        expect(row.shared_past, orSO_SELockSharedStarveExclusive(lock_, 0));
        if (row.held >= 0) {
            holder.run([&] { orSO_SELockRelease(lock_); });
        }
        writer.finish();
    }
}

TEST_F(SELock, HandsOverToTheLatestWriterFirstButADowngradeToAllReaders) {
    for (const bool downgrade : {false, true}) {
        SCOPED_TRACE(downgrade);
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
        reader.start([&] { EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 1); });
        until_queued(lock_, 1, 1);
        other_reader.start([&] { EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 1); });
        until_queued(lock_, 1, 2);
        second.start(write("second"));
        until_queued(lock_, 2, 2);
        if (downgrade) {
            orSO_SELockExclusiveToShared(lock_);
            EXPECT_EQ(lock_->last_transition, kDowngraded);
        } else {
            orSO_SELockRelease(lock_);
        }
        reader.finish();
        other_reader.finish();
        EXPECT_EQ(state(), downgrade ? "shared 3" : "shared 2");
        EXPECT_EQ(order.empty(), downgrade);
        for (Peer* peer : {&reader, &other_reader}) {
            EXPECT_EQ(first.is_busy() && second.is_busy(), downgrade);
            peer->run([&] { orSO_SELockRelease(lock_); });
        }
        if (downgrade) {
            orSO_SELockRelease(lock_);
        }
        first.finish();
        second.finish();
        EXPECT_EQ(order, (std::vector<std::string>{"second", "first"}));
        EXPECT_EQ(state(), "free");
    }
}

constexpr uintptr_t kRefuses = 7;
std::string news;
int hear(uintptr_t first, uint32_t event, uintptr_t second, uint32_t zero) {
    EXPECT_EQ(zero, 0u);
    news += std::to_string(first) + (event == ORSO_NOTIFY_FREE        ? " free;"
                                     : event == ORSO_NOTIFY_WITHDRAWN ? " withdrawn;"
                                                                      : "?");
    return second == kRefuses ? 1 : 0;
}

TEST_F(SELock, NotificationsAreCalledLatestFirstUpToTheFirstServed) {
    Peer other;
    const auto lock = [&] { EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1); };
    const auto release = [&] { orSO_SELockRelease(lock_); };
    const auto take_news = [] { return std::exchange(news, {}); };
    const auto next_news = [&] {
        other.run(release);
        return take_news();
    };
    other.run(lock);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 1, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 2, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 3, kRefuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 4, 0), 0) << "nothing to register";
    EXPECT_EQ(next_news(), "3 free;2 free;");
    other.run(lock);
    EXPECT_EQ(next_news(), "3 free;1 free;");

    // A waiter comes before the news.
    ASSERT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 4, 0), 1);
    EXPECT_EQ(lock_->last_transition, kGrantedByNotify);
    other.start(lock);
    until_queued(lock_, 1, 0);
    release();
    other.finish();
    EXPECT_EQ(take_news(), "");
    EXPECT_EQ(next_news(), "3 free;");

    // Withdrawing asks each equal registration until one agrees. The refusing one stays to the end.
    other.run(lock);
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, nullptr, 3, kRefuses), 0);
    EXPECT_EQ(take_news(), "");
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, kRefuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 5, 0), 1);
    EXPECT_EQ(take_news(), "3 withdrawn;5 withdrawn;");
    EXPECT_EQ(next_news(), "5 free;");
}

TEST_F(SELock, AThreadThatIsNotAttachedNeverOwnsAndNeverWaits) {
    std::thread([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 1);
        EXPECT_EQ(state(), "shared 1");
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 0) << "all-ones is nobody";
        orSO_SELockRelease(lock_);
    }).join();
    ASSERT_EQ(orSO_SELockExclusive(lock_, 1), 1);
    std::thread([&] {
        EXPECT_EQ(orSO_SELockExclusive(lock_, 1), 0);
        EXPECT_EQ(orSO_SELockSharedStarveExclusive(lock_, 1), 0);
        EXPECT_EQ(orSO_SELockSharedWaitForExclusive(lock_, 1), 0);
    }).join();
    until_queued(lock_, 0, 0);
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
    EXPECT_EQ(orSO_SELockExclusiveNotify(nullptr, hear, 0, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(nullptr, hear, 0, 0), 0);
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
}

}  // namespace
