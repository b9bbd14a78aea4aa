// Threads that use locks, and ways to see what a lock is doing without waiting for time to pass.
#pragma once

#include <gtest/gtest.h>
#include <sched.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "lists/se_lock_record.h"
#include "lists/spin_word.h"
#include "vlrcomn/se_lock.h"

namespace locks {

using velora_com::qel::lists::SpinGuard;
using velora_com::qel::lists::Waiter;

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
    Registry() {
        EXPECT_GE(orSO_ProcessAttach(), 0);
        self_.emplace();
    }
    ~Registry() {
        self_.reset();
        EXPECT_EQ(orSO_ProcessDetach(), 1);
    }

private:
    std::optional<Attached> self_;
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
    Peer() : thread_([this] { work(); }) {}
    ~Peer() {
        start(nullptr);
        thread_.join();
    }

    uintptr_t identity() {
        uintptr_t result = 0;
        run([&] { result = orSO_GetThread(); });
        return result;
    }
    void start(std::function<void()> job) {
        finish();
        const std::lock_guard guard(mutex_);
        job_ = std::move(job);
        busy_ = true;
        changed_.notify_all();
    }
    void finish() {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [this] { return !busy_; });
    }
    bool is_busy() {
        const std::lock_guard guard(mutex_);
        return busy_;
    }
    void run(std::function<void()> job) {
        start(std::move(job));
        finish();
    }

private:
    void work() {
        const Attached attached;
        std::unique_lock guard(mutex_);
        for (;;) {
            changed_.wait(guard, [this] { return busy_; });
            const std::function<void()> job = std::exchange(job_, nullptr);
            guard.unlock();
            if (job) {
                job();
            }
            guard.lock();
            busy_ = false;
            changed_.notify_all();
            if (!job) {
                return;
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::function<void()> job_;
    bool busy_ = false;
    std::thread thread_;
};

// Waits until `condition`, looked at under the lock's spin word, holds.
template <typename Condition>
void until(orSELock* lock, Condition condition) {
    for (;;) {
        {
            const SpinGuard guard(lock->spin);
            if (condition()) {
                return;
            }
        }
        sched_yield();
    }
}

inline int length(const orLLItem* queue) {
    int count = 0;
    for (; queue != nullptr; queue = queue->next) {
        ++count;
    }
    return count;
}

// Waits until that many threads wait for exclusive and for shared access.
inline void until_queued(orSELock* lock, int writers, int readers) {
    until(lock, [=] {
        return length(lock->writers) == writers && length(lock->shared_waiters) == readers;
    });
}

}  // namespace locks
