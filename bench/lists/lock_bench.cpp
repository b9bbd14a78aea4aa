// Shared/exclusive locks: taking and giving back alone, and two threads with one lock or one each.
#include <benchmark/benchmark.h>
#include <pthread.h>

#include <shared_mutex>
#include <string>

#if defined(WITH_SYNCHRONIZATION)
#include <absl/synchronization/mutex.h>
#endif
#if defined(WITH_THREAD)
#include <boost/thread/shared_mutex.hpp>
#endif

#include "vlrcomn/se_lock.h"

namespace {

// What a thread needs before it uses a contender.
struct NoRegistry {};
struct Attached {
    Attached() { orSO_ThreadAttach(); }
    ~Attached() { orSO_ThreadDetach(); }
};

struct Ours {
    static constexpr const char* name = "ours";
    using Thread = Attached;
    Ours() { orSO_SELockCreate(&lock_); }
    ~Ours() { orSO_Release(lock_); }
    void lock() { orSO_SELockExclusive(lock_, 1); }
    void unlock() { orSO_SELockRelease(lock_); }
    void lock_shared() { orSO_SELockSharedWaitForExclusive(lock_, 1); }
    void unlock_shared() { orSO_SELockRelease(lock_); }

private:
    orSELock* lock_ = nullptr;
};

// The four guarded exchanges that a pair consists of by contract, and nothing else. No lock: for
// comparison alone, with one thread.
struct Limit {
    static constexpr const char* name = "limit";
    using Thread = NoRegistry;
    void lock() {
        exchange(1);
        exchange(0);
    }
    void unlock() { lock(); }
    void lock_shared() { lock(); }
    void unlock_shared() { lock(); }

private:
    [[gnu::noinline]] int exchange(int value) {
        pthread_mutex_lock(&mutex_);
        const int previous = word_;
        word_ = value;
        pthread_mutex_unlock(&mutex_);
        return previous;
    }
    static inline pthread_mutex_t mutex_ = PTHREAD_MUTEX_INITIALIZER;
    volatile int word_ = 0;
};

struct PthreadRwlock {
    static constexpr const char* name = "pthread_rwlock";
    using Thread = NoRegistry;
    void lock() { pthread_rwlock_wrlock(&lock_); }
    void unlock() { pthread_rwlock_unlock(&lock_); }
    void lock_shared() { pthread_rwlock_rdlock(&lock_); }
    void unlock_shared() { pthread_rwlock_unlock(&lock_); }

private:
    pthread_rwlock_t lock_ = PTHREAD_RWLOCK_INITIALIZER;
};

struct StdSharedMutex : std::shared_mutex {
    static constexpr const char* name = "std_shared_mutex";
    using Thread = NoRegistry;
};

#if defined(WITH_THREAD)
struct BoostSharedMutex : boost::shared_mutex {
    static constexpr const char* name = "boost_shared_mutex";
    using Thread = NoRegistry;
};
#endif

#if defined(WITH_SYNCHRONIZATION)
struct AbslMutex {
    static constexpr const char* name = "absl_mutex";
    using Thread = NoRegistry;
    void lock() { mutex_.Lock(); }
    void unlock() { mutex_.Unlock(); }
    void lock_shared() { mutex_.ReaderLock(); }
    void unlock_shared() { mutex_.ReaderUnlock(); }

private:
    absl::Mutex mutex_;
};
#endif

template <typename Contender>
void exclusive_pair(benchmark::State& state) {
    [[maybe_unused]] const typename Contender::Thread thread;
    Contender lock;
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
}

template <typename Contender>
void shared_pair(benchmark::State& state) {
    [[maybe_unused]] const typename Contender::Thread thread;
    Contender lock;
    for (auto _ : state) {
        lock.lock_shared();
        benchmark::ClobberMemory();
        lock.unlock_shared();
    }
}

// Nine times in ten shared; a few words are read, or written, inside.
template <typename Contender>
void mostly_shared(benchmark::State& state) {
    static Contender lock;
    static int words[8];
    [[maybe_unused]] const typename Contender::Thread thread;
    int turn = state.thread_index();
    for (auto _ : state) {
        if (++turn % 10 == 0) {
            lock.lock();
            for (int& word : words) {
                ++word;
            }
            lock.unlock();
        } else {
            lock.lock_shared();
            for (const int& word : words) {
                benchmark::DoNotOptimize(word);
            }
            lock.unlock_shared();
        }
    }
}

template <typename Contender>
void register_lock() {
    using benchmark::RegisterBenchmark;
    const auto named = [](const char* workload) {
        return std::string("BM_lock_") + workload + "/" + Contender::name;
    };
    RegisterBenchmark(named("exclusive_pair").c_str(), exclusive_pair<Contender>);
    RegisterBenchmark(named("shared_pair").c_str(), shared_pair<Contender>);
    // Two threads that share nothing but the process-wide mutex of the exchanges.
    RegisterBenchmark(named("exclusive_pair_each_its_own").c_str(), exclusive_pair<Contender>)
        ->Threads(2)
        ->UseRealTime();
    if (std::string(Contender::name) != "limit") {
        RegisterBenchmark(named("one_for_two_90_percent_shared").c_str(), mostly_shared<Contender>)
            ->Threads(2)
            ->UseRealTime();
    }
}

const bool registered = [] {
    register_lock<Ours>();
    register_lock<Limit>();
    register_lock<PthreadRwlock>();
    register_lock<StdSharedMutex>();
#if defined(WITH_THREAD)
    register_lock<BoostSharedMutex>();
#endif
#if defined(WITH_SYNCHRONIZATION)
    register_lock<AbslMutex>();
#endif
    return true;
}();

}  // namespace
