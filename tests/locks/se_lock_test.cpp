#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>

#include "lists/thread_registry.h"
#include "locks/peers.h"
#include "support/child_process.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

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
    void release(Peer& peer) {
        peer.run([this] { orSO_SELockRelease(lock_); });
    }

    const Registry registry_;
    const Lock lock_;
};

TEST_F(SELock, IsRecursiveForItsOwner) {
    Peer other;
    EXPECT_EQ(lock_->last_transition, Transition::created);
    for (const Mode mode : {exclusive, shared_behind_writers, shared_past_writers}) {
        EXPECT_EQ(mode(lock_, 1), 1);
    }
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0), 1);
    EXPECT_EQ(lock_->last_transition, Transition::exclusive_granted)
        << "only the first grant counts";
    EXPECT_EQ(lock_->owner, orSO_GetThread());
    EXPECT_EQ(lock_->owner_process, static_cast<uint32_t>(getpid()));
    for (int depth = 4; depth > 0; --depth) {
        EXPECT_EQ(state(), "exclusive " + std::to_string(depth));
        other.run([&] { EXPECT_EQ(exclusive(lock_, 0), 0); });
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "free");
    EXPECT_EQ(lock_->last_transition, Transition::released_to_free);
}

TEST_F(SELock, GrantsAtOnceWhatTheModeAllows) {
    const struct {
        const char* before;
        Mode held;
        bool writer_queued, grants_exclusive, grants_shared_behind, grants_shared_past;
    } rows[] = {{"free", nullptr, false, true, true, true},
                {"shared 1", shared_behind_writers, false, false, true, true},
                {"shared 1", shared_behind_writers, true, false, false, true},
                {"exclusive 1", exclusive, false, false, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Peer holder, writer;
        if (row.held != nullptr) {
            holder.run([&] { row.held(lock_, 1); });
        }
        if (row.writer_queued) {
            queue(writer, lock_, exclusive);
        }
        const auto expect = [&](bool expected, int granted) {
            EXPECT_EQ(granted, expected ? 1 : 0);
            if (granted == 1) {
                orSO_SELockRelease(lock_);
            }
            EXPECT_EQ(state(), row.before);
        };
        expect(row.grants_exclusive, orSO_SELockExclusive(lock_, 0));
        expect(row.grants_exclusive, orSO_SELock(lock_, 1, 2));
        expect(row.grants_exclusive, orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0));
        expect(row.grants_shared_behind, orSO_SELockSharedWaitForExclusive(lock_, 0));
        expect(row.grants_shared_behind, orSO_SELock(lock_, 2, 0));
        expect(row.grants_shared_past, orSO_SELockSharedStarveExclusive(lock_, 0));
        if (row.held != nullptr) {
            release(holder);
        }
        if (row.writer_queued) {
            release(writer);
        }
    }
}

TEST_F(SELock, HandsOverToTheLatestWriterFirstButADowngradeToAllReaders) {
    for (const bool downgrade : {false, true}) {
        SCOPED_TRACE(downgrade);
        Peer first, second, reader, other_reader;
        ASSERT_EQ(exclusive(lock_, 1), 1);
        queue(first, lock_, exclusive);
        queue(reader, lock_, shared_behind_writers);
        queue(other_reader, lock_, shared_past_writers);
        queue(second, lock_, exclusive);
        const auto write = [&](Peer& writer) {
            writer.finish();
            EXPECT_EQ(state(), "exclusive 1");
            EXPECT_EQ(lock_->last_transition, Transition::handed_to_writer);
            release(writer);
        };
        const auto read = [&] {
            reader.finish();
            other_reader.finish();
            EXPECT_EQ(state(), downgrade ? "shared 3" : "shared 2");
            EXPECT_EQ(first.is_busy() && second.is_busy(), downgrade);
            release(reader);
            release(other_reader);
        };
        if (downgrade) {
            orSO_SELockExclusiveToShared(lock_);
            EXPECT_EQ(lock_->last_transition, Transition::downgraded);
            read();
        }
        orSO_SELockRelease(lock_);
        write(second);
        write(first);
        if (!downgrade) {
            read();
        }
        EXPECT_EQ(state(), "free");
    }
}

constexpr uintptr_t refuses = 7;
std::string news;
int hear(uintptr_t first, uint32_t event, uintptr_t second, uint32_t zero) {
    pthread_testcancel();
    EXPECT_EQ(zero, 0u);
    EXPECT_TRUE(event == ORSO_NOTIFY_FREE || event == ORSO_NOTIFY_WITHDRAWN);
    news += std::to_string(first) + (event == ORSO_NOTIFY_FREE ? " free;" : " withdrawn;");
    return second == refuses ? 1 : 0;
}

TEST_F(SELock, NotificationsAreCalledLatestFirstUpToTheFirstServed) {
    Peer other;
    const auto lock = [&] { other.run([&] { EXPECT_EQ(exclusive(lock_, 1), 1); }); };
    const auto take_news = [] { return std::exchange(news, {}); };
    const auto next_news = [&] {
        release(other);
        return take_news();
    };
    lock();
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 1, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 2, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 3, refuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 4, 0), 0) << "nothing to register";
    EXPECT_EQ(next_news(), "3 free;2 free;");
    lock();
    EXPECT_EQ(next_news(), "3 free;1 free;");

    // A waiter comes before the news.
    ASSERT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 4, 0), 1);
    EXPECT_EQ(lock_->last_transition, Transition::granted_by_notify);
    queue(other, lock_, exclusive);
    orSO_SELockRelease(lock_);
    other.finish();
    EXPECT_EQ(take_news(), "");
    EXPECT_EQ(next_news(), "3 free;");

    // Withdrawing asks each equal registration until one agrees. The refusing one stays to the end.
    lock();
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, nullptr, 3, refuses), 0);
    EXPECT_EQ(take_news(), "");
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, refuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 5, 0), 1);
    EXPECT_EQ(take_news(), "3 withdrawn;5 withdrawn;");

    // Even a cancelled thread hears its callback out.
    std::thread([this] {
        pthread_cancel(pthread_self());
        orSO_SELockRelease(lock_);
    }).join();
    EXPECT_EQ(take_news(), "5 free;");
}

TEST_F(SELock, AThreadThatIsNotAttachedNeverOwnsAndNeverWaits) {
    std::thread([&] {
        EXPECT_EQ(exclusive(lock_, 1), 1);
        EXPECT_EQ(state(), "shared 1");
        EXPECT_EQ(exclusive(lock_, 1), 0) << "all-ones is nobody";
        orSO_SELockRelease(lock_);
    }).join();
    ASSERT_EQ(exclusive(lock_, 1), 1);
    std::thread([&] {
        for (const Mode mode : {exclusive, shared_behind_writers, shared_past_writers}) {
            EXPECT_EQ(mode(lock_, 1), 0);
        }
    }).join();
    EXPECT_EQ(queued(lock_), 0);
    orSO_SELockRelease(lock_);
}

TEST_F(SELock, NullDoesNothing) {
    EXPECT_EQ(orSO_SELockCreate(nullptr), ORU_FAILURE);
    orSO_Release(nullptr);
    EXPECT_EQ(orSO_SELock(nullptr, 1, 1), 0);
    for (const Mode mode : {exclusive, shared_behind_writers, shared_past_writers}) {
        EXPECT_EQ(mode(nullptr, 1), 0);
    }
    orSO_SELockExclusiveToShared(nullptr);
    orSO_SELockRelease(nullptr);
    EXPECT_EQ(orSO_SELockExclusiveNotify(nullptr, hear, 0, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(nullptr, hear, 0, 0), 0);
    EXPECT_EQ(orSL_Get(nullptr), 0);
    orSL_Release(nullptr);
}

TEST_F(SELock, AForkedChildRecordsItsOwnProcess) {
    ASSERT_EQ(exclusive(lock_, 1), 1);
    orSO_SELockRelease(lock_);
    EXPECT_TRUE(holds_in_child([this] {
        return exclusive(lock_, 0) == 1 && lock_->owner_process == static_cast<uint32_t>(getpid());
    }));
}

oruHandle own_event() {
    return reinterpret_cast<oruHandle>(orSO_GetThread());
}

TEST(ThreadRegistry, AttachesAndDetaches) {
    EXPECT_EQ(orSO_tls_index, -1);
    EXPECT_EQ(orSO_ThreadAttach(), 0u);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_DbgGetThread(), 0u);
    EXPECT_EQ(orSO_ThreadAttachX(), 0);
    EXPECT_EQ(orSO_ThreadDetach(), 0);
    EXPECT_EQ(orSO_ProcessDetach(), 0);

    const int32_t index = orSO_ProcessAttach();
    ASSERT_GE(index, 0);
    EXPECT_EQ(orSO_tls_index, index);
    EXPECT_EQ(orSO_DbgGetThread(), 0u);
    EXPECT_EQ(orSO_ThreadAttach(), 1u);
    const uintptr_t me = orSO_GetThread();
    EXPECT_EQ(orSO_ThreadAttach(), me) << "only the first one gives 1";
    EXPECT_EQ(orSO_DbgGetThread(), me);
    EXPECT_EQ(oruWaitForSingleObject(own_event(), 0), ORU_WAIT_TIMEOUT) << "starts reset";
    std::thread([] { EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD); }).join();
    orSO_ThreadDetachX();
    EXPECT_EQ(orSO_GetThread(), me);
    EXPECT_EQ(orSO_ThreadDetach(), 1);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_DbgGetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_ThreadDetach(), 1) << "nothing to close is no failure";

    EXPECT_EQ(orSO_ThreadAttach(), 1u);
    const oruHandle event = own_event();
    EXPECT_EQ(orSO_ThreadAttachX(), 1);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(oruCloseHandle(event), 1) << "left open for its owner";
    EXPECT_EQ(orSO_ProcessDetach(), 1);
    EXPECT_EQ(orSO_tls_index, -1);
}

// The end of a layer-started thread frees the index; attaching anew is the way on.
TEST(ThreadRegistry, SurvivesTheSweepOfAnEndingThread) {
    ASSERT_GE(orSO_ProcessAttach(), 0);
    ASSERT_EQ(orSO_ThreadAttach(), 1u);
    const oruHandle left_behind = own_event();
    const auto do_nothing = [](void*) { return 0u; };
    const oruHandle thread = oruCreateThread(nullptr, 0, do_nothing, nullptr, 0, nullptr);
    oruWaitForSingleObject(thread, ORU_INFINITE);
    oruCloseHandle(thread);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_ThreadAttach(), 0u);

    const Registry attached_anew;
    const Lock lock;
    EXPECT_EQ(orSO_SELockExclusive(lock, 1), 1);
    EXPECT_EQ(lock->owner, orSO_GetThread());
    orSO_SELockRelease(lock);
    oruCloseHandle(left_behind);
}

}  // namespace
