// Threads that use locks, and ways to see what a lock is doing without waiting for time to pass.
#pragma once

#include <gtest/gtest.h>
#include <sched.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "lists/se_lock_record.h"
#include "lists/spin_word.h"
#include "vlrcomn/se_lock.h"

namespace locks {

using velora_com::qel::lists::SpinGuard;

// Attaches the calling thread for a scope.
class Attached {
public:
    Attached() { EXPECT_EQ(orSO_ThreadAttach(), 1u); }
    ~Attached() { EXPECT_EQ(orSO_ThreadDetach(), 1); }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;
};

// Sets the registry up for one test and attaches the test's own thread.
class Registry {
public:
    Registry() {}  // lets clang make const ones

private:
    struct Process {
        Process() { EXPECT_GE(orSO_ProcessAttach(), 0); }
        ~Process() { EXPECT_EQ(orSO_ProcessDetach(), 1); }
    } process_;
    Attached self_;
};

// Owns a lock.
class Lock {
public:
    Lock() { EXPECT_EQ(orSO_SELockCreate(&lock_), ORU_SUCCESS); }
    ~Lock() { orSO_Release(lock_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    operator orSELock*() const { return lock_; }
    orSELock* operator->() const { return lock_; }

private:
    orSELock* lock_ = nullptr;
};

// An attached thread that does one job after another.
class Peer {
public:
    ~Peer() {
        start([this] { ended_ = true; });
        thread_.join();
    }
    void start(std::function<void()> job) {
        finish();
        const std::lock_guard guard(mutex_);
        job_ = std::move(job);
        changed_.notify_all();
    }
    void finish() {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [this] { return !job_; });
    }
    void run(std::function<void()> job) {
        start(std::move(job));
        finish();
    }
    bool is_busy() {
        const std::lock_guard guard(mutex_);
        return job_ != nullptr;
    }

private:
    void work() {
        const Attached attached;
        while (!ended_) {
            std::unique_lock guard(mutex_);
            changed_.wait(guard, [this] { return job_ != nullptr; });
            guard.unlock();
            job_();
            guard.lock();
            job_ = nullptr;
            changed_.notify_all();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::function<void()> job_;
    bool ended_ = false;
    std::thread thread_{[this] { work(); }};
};

inline int length(const orLLItem* queue) {
    return queue == nullptr ? 0 : 1 + length(queue->next);
}

// Waits until that many threads wait for exclusive and for shared access.
inline void until_queued(orSELock* lock, int writers, int readers) {
    for (;; sched_yield()) {
        const SpinGuard guard(lock->spin);
        if (length(lock->writers) == writers && length(lock->shared_waiters) == readers) {
            return;
        }
    }
}

}  // namespace locks
