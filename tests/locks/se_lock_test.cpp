#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "lists/thread_registry.h"
#include "locks/peers.h"
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
    for (const Mode mode : {exclusive, shared_behind_writers, shared_past_writers}) {
        EXPECT_EQ(mode(lock_, 1), 1);
    }
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, nullptr, 0, 0), 1);
    EXPECT_EQ(lock_->last_transition, Transition::exclusive_granted) << "the first grant's";
    EXPECT_EQ(lock_->owner, orSO_GetThread());
    for (int depth = 4; depth > 0; --depth) {
        EXPECT_EQ(state(), "exclusive " + std::to_string(depth));
        other.run([&] { EXPECT_EQ(exclusive(lock_, 0), 0); });
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "free");
}

TEST_F(SELock, GrantsAtOnceWhatTheModeAllows) {
    const struct {
        const char* before;
        Mode held;
        bool writer_queued;
        int exclusive, behind_writers, past_writers;
    } rows[] = {{"free", nullptr, false, 1, 1, 1},
                {"shared 1", shared_behind_writers, false, 0, 1, 1},
                {"shared 1", shared_behind_writers, true, 0, 0, 1},
                {"exclusive 1", exclusive, false, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Peer holder, writer;
        if (row.held != nullptr) {
            holder.run([&] { row.held(lock_, 1); });
        }
        if (row.writer_queued) {
            queue(writer, lock_, exclusive);
        }
        const auto expect = [&](int expected, int granted) {
            EXPECT_EQ(granted, expected);
            if (granted == 1) {
                orSO_SELockRelease(lock_);
            }
            EXPECT_EQ(state(), row.before);
        };
        expect(row.exclusive, orSO_SELockExclusive(lock_, 0));
        expect(row.exclusive, orSO_SELock(lock_, 1, 2));
        expect(row.behind_writers, orSO_SELock(lock_, 2, 0));
        expect(row.past_writers, orSO_SELockSharedStarveExclusive(lock_, 0));
        while (state() != "free") {
            orSO_SELockRelease(lock_);  // whoever holds it
        }
    }
}

TEST_F(SELock, HandsOverToTheLatestWriterFirstAndThenToAllReaders) {
    Peer first, second, reader, other_reader;
    ASSERT_EQ(exclusive(lock_, 1), 1);
    queue(first, lock_, exclusive);
    queue(reader, lock_, shared_behind_writers);
    queue(other_reader, lock_, shared_past_writers);
    queue(second, lock_, exclusive);
    orSO_SELockRelease(lock_);
    for (Peer* writer : {&second, &first}) {
        writer->finish();
        EXPECT_EQ(state(), "exclusive 1");
        EXPECT_EQ(lock_->last_transition, Transition::handed_to_writer);
        release(*writer);
    }
    reader.finish();
    other_reader.finish();
    EXPECT_EQ(state(), "shared 2");
}

TEST_F(SELock, ADowngradeLetsAllReadersInPastTheWriters) {
    Peer writer, reader, other_reader;
    ASSERT_EQ(exclusive(lock_, 1), 1);
    queue(writer, lock_, exclusive);
    queue(reader, lock_, shared_behind_writers);
    queue(other_reader, lock_, shared_past_writers);
    orSO_SELockExclusiveToShared(lock_);
    EXPECT_EQ(lock_->last_transition, Transition::downgraded);
    EXPECT_EQ(state(), "shared 3");
    EXPECT_EQ(queued(lock_), 1);
    for (int readers = 3; readers > 0; --readers) {
        orSO_SELockRelease(lock_);
    }
    EXPECT_EQ(state(), "exclusive 1");
}

constexpr uintptr_t refuses = 7;
std::string news;
int hear(uintptr_t first, uint32_t event, uintptr_t second, uint32_t) {
    pthread_testcancel();
    news += std::to_string(first) + (event == ORSO_NOTIFY_FREE ? " free;" : " withdrawn;");
    return second == refuses ? 1 : 0;
}

TEST_F(SELock, NotificationsAreCalledLatestFirstUpToTheFirstServed) {
    Peer other;
    const auto lock = [&] { other.run([&] { EXPECT_EQ(exclusive(lock_, 1), 1); }); };
    const auto next_news = [&] {
        release(other);
        return std::exchange(news, {});
    };
    lock();
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 1, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 2, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 3, refuses), 0);
    EXPECT_EQ(next_news(), "3 free;2 free;");

    // A waiter comes before the news.
    ASSERT_EQ(orSO_SELockExclusiveNotify(lock_, hear, 4, 0), 1);
    EXPECT_EQ(lock_->last_transition, Transition::granted_by_notify);
    queue(other, lock_, exclusive);
    orSO_SELockRelease(lock_);
    other.finish();
    EXPECT_EQ(next_news(), "3 free;1 free;");

    // Withdrawing asks each equal registration until one agrees. The refusing one stays to the end.
    lock();
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    orSO_SELockExclusiveNotify(lock_, hear, 5, 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, 0), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 3, refuses), 0);
    EXPECT_EQ(orSO_SELockExclusiveUnnotify(lock_, hear, 5, 0), 1);
    EXPECT_EQ(std::exchange(news, {}), "3 withdrawn;5 withdrawn;");

    // Even a cancelled thread hears its callback out.
    std::thread([this] {
        pthread_cancel(pthread_self());
        orSO_SELockRelease(lock_);
    }).join();
    EXPECT_EQ(std::exchange(news, {}), "5 free;");
}

TEST_F(SELock, AThreadThatIsNotAttachedNeverOwnsAndNeverWaits) {
    std::thread([&] {
        EXPECT_EQ(exclusive(lock_, 1), 1);
        EXPECT_EQ(state(), "shared 1") << "all-ones is nobody";
        for (const Mode mode : {exclusive, shared_behind_writers}) {
            EXPECT_EQ(mode(lock_, 1), mode == exclusive ? 0 : 1);
        }
    }).join();
    EXPECT_EQ(queued(lock_), 0);
}

oruHandle own_event() {
    return reinterpret_cast<oruHandle>(orSO_GetThread());
}

TEST(ThreadRegistry, AttachesAndDetaches) {
    EXPECT_EQ(orSO_ThreadAttach(), 0u) << "not before the process";
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    ASSERT_GE(orSO_ProcessAttach(), 0);
    EXPECT_EQ(orSO_ThreadAttach(), 1u);
    const oruHandle event = own_event();
    EXPECT_EQ(orSO_ThreadAttach(), orSO_GetThread()) << "only the first one gives 1";
    std::thread([] { EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD); }).join();
    EXPECT_EQ(orSO_ThreadAttachX(), 1);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(oruCloseHandle(event), 1) << "left open for its owner";
    EXPECT_EQ(orSO_ThreadDetach(), 1) << "nothing to close is no failure";
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
