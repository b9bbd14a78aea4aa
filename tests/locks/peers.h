// Threads that use locks, and ways to see what a lock is doing without waiting for time to pass.
#pragma once

#include <condition_variable>

#include "locks/se_lock_record.h"
#include "locks/spin_word.h"
#include "support/test.h"

namespace locks {

// Attaches the calling thread for a scope.
struct Attached {
    Attached() { EXPECT_EQ(orSO_ThreadAttach(), 1u); }
    ~Attached() { EXPECT_EQ(orSO_ThreadDetach(), 1); }
};

struct AttachedProcess {
    AttachedProcess() { EXPECT_GE(orSO_ProcessAttach(), 0); }
    ~AttachedProcess() { EXPECT_EQ(orSO_ProcessDetach(), 1); }
};
struct Registry : AttachedProcess, Attached {};

using Mode = int (*)(orSELock* lock, int wait);
constexpr Mode exclusive = orSO_SELockExclusive;
constexpr Mode shared_behind_writers = orSO_SELockSharedWaitForExclusive;
constexpr Mode shared_past_writers = orSO_SELockSharedStarveExclusive;

// An attached thread that does one job after another.
class Peer {
public:
    ~Peer() {
        if (thread.joinable()) {
            run([this] { ended_ = true; });
            thread.join();
        }
    }
    void start(std::function<void()> job) {
        finish();
        const std::lock_guard guard(mutex_);
        job_ = std::move(job);
        changed_.notify_all();
    }
    void finish() {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [this] { return job_ == nullptr; });
    }
    void run(std::function<void()> job) {
        start(std::move(job));
        finish();
    }

private:
    // No atomic word: valgrind follows POSIX calls only.
    std::mutex mutex_;
    std::condition_variable changed_;
    std::function<void()> job_;  // null while the thread is idle
    bool ended_ = false;

public:
    std::thread thread{[this] {
        const Attached attached;
        std::unique_lock guard(mutex_);
        while (!ended_) {
            changed_.wait(guard, [this] { return job_ != nullptr; });
            guard.unlock();
            job_();
            guard.lock();
            job_ = nullptr;
            changed_.notify_all();
        }
    }};
};

inline int length(const orLLItem* queue) {
    return queue == nullptr ? 0 : 1 + length(queue->next);
}

// How many threads wait for the lock.
inline int queued(orSELock* lock) {
    const velora_com::qel::locks::SpinGuard guard(lock->spin);
    return length(lock->writers) + length(lock->shared_waiters);
}

// Has an idle peer wait for the lock, and returns once it does.
inline void queue(Peer& peer, orSELock* lock, Mode mode) {
    const int before = queued(lock);
    peer.start([=] { EXPECT_EQ(mode(lock, 1), 1); });
    while (queued(lock) == before) {
        sched_yield();
    }
}

}  // namespace locks
