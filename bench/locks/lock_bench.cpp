// Shared/exclusive locks: taking and releasing alone, threads with one lock, and threads with one each.
#include <benchmark/benchmark.h>
#include <pthread.h>

#include <shared_mutex>
#include <string>

#include "registry.h"
#include "support/own_lines.h"
#include "support/registering.h"
#include "sync/monitors.h"
#include "vlrcomn/se_lock.h"

#ifdef WITH_NSPR
#include <prrwlock.h>
#endif

namespace {

// What a thread needs before it uses a contender.
struct NoRegistry {};

struct Ours {
    static constexpr const char* name = "ours";
    using Thread = AttachedThread;
    Ours() { orSO_SELockCreate(&lock_); }
    ~Ours() { orSO_Release(lock_); }
    void lock() { orSO_SELockExclusive(lock_, 1); }
    void unlock() { orSO_SELockRelease(lock_); }
    void lock_shared() { orSO_SELockSharedWaitForExclusive(lock_, 1); }
    void unlock_shared() { orSO_SELockRelease(lock_); }

private:
    orSELock* lock_ = nullptr;
};

// Taking and giving back the spin word twice, as a pair does, by four exchanges and
// nothing else. No lock: for comparison alone, with one thread.
struct Limit {
    static constexpr const char* name = "limit";
    using Thread = NoRegistry;
    void lock() {
        __atomic_exchange_n(&word_, 1, __ATOMIC_ACQUIRE);
        __atomic_exchange_n(&word_, 0, __ATOMIC_RELEASE);
    }
    void unlock() { lock(); }
    void lock_shared() { lock(); }
    void unlock_shared() { lock(); }

private:
    int32_t word_ = 0;
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
    static constexpr const char* name = "std";
    using Thread = NoRegistry;
};

#ifdef WITH_BOOST
struct BoostSharedMutex : boost::shared_mutex {
    static constexpr const char* name = "boost";
    using Thread = NoRegistry;
};
#endif

#ifdef WITH_ABSEIL
struct AbslMutex {
    static constexpr const char* name = "abseil";
    using Thread = NoRegistry;
    void lock() { mutex_.Lock(); }
    void unlock() { mutex_.Unlock(); }
    void lock_shared() { mutex_.ReaderLock(); }
    void unlock_shared() { mutex_.ReaderUnlock(); }

private:
    absl::Mutex mutex_;
};
#endif

#ifdef WITH_GLIB
struct GlibRwLock {
    static constexpr const char* name = "glib";
    using Thread = NoRegistry;
    GlibRwLock() { g_rw_lock_init(&lock_); }
    ~GlibRwLock() { g_rw_lock_clear(&lock_); }
    void lock() { g_rw_lock_writer_lock(&lock_); }
    void unlock() { g_rw_lock_writer_unlock(&lock_); }
    void lock_shared() { g_rw_lock_reader_lock(&lock_); }
    void unlock_shared() { g_rw_lock_reader_unlock(&lock_); }

private:
    GRWLock lock_;
};
#endif

#ifdef WITH_NSPR
struct NsprRwLock {
    static constexpr const char* name = "nspr";
    using Thread = NoRegistry;
    ~NsprRwLock() { PR_DestroyRWLock(lock_); }
    void lock() { PR_RWLock_Wlock(lock_); }
    void unlock() { PR_RWLock_Unlock(lock_); }
    void lock_shared() { PR_RWLock_Rlock(lock_); }
    void unlock_shared() { PR_RWLock_Unlock(lock_); }

private:
    PRRWLock* lock_ = PR_NewRWLock(PR_RWLOCK_RANK_NONE, "bench");
};
#endif

template <typename Contender>
void exclusive_pair(benchmark::State& state) {
    [[maybe_unused]] const typename Contender::Thread thread;
    OwnLines<Contender> lock;
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
}

template <typename Contender>
void shared_pair(benchmark::State& state) {
    [[maybe_unused]] const typename Contender::Thread thread;
    OwnLines<Contender> lock;
    for (auto _ : state) {
        lock.lock_shared();
        benchmark::ClobberMemory();
        lock.unlock_shared();
    }
}

// All threads with one lock, exclusively so many times in a hundred; a few words are read, or written, inside.
template <typename Contender>
void one_for_all(benchmark::State& state) {
    struct Words {
        int values[8];
    };
    [[maybe_unused]] const typename Contender::Thread thread;
    static OwnLines<Contender> lock;
    static OwnLines<Words> words;
    const auto exclusive = static_cast<int>(state.range(0)) / 10;
    int turn = state.thread_index();
    for (auto _ : state) {
        if (++turn % 10 < exclusive) {
            lock.lock();
            for (int& value : words.values) {
                ++value;
            }
            lock.unlock();
        } else {
            lock.lock_shared();
            for (const int& value : words.values) {
                benchmark::DoNotOptimize(value);
            }
            lock.unlock_shared();
        }
    }
}

template <typename Contender>
void add_lock() {
    const auto named = [](const std::string& workload, auto run) {
        return add_contender("lock_" + workload, Contender::name, run);
    };
    named("exclusive_pair", exclusive_pair<Contender>);
    named("shared_pair", shared_pair<Contender>);
    named("each_its_own", exclusive_pair<Contender>)->Threads(2)->UseRealTime();
    if (Contender::name != Limit::name) {
        const auto by_threads = [&](const char* workload, int threads) {
            return named(workload, one_for_all<Contender>)
                ->ArgName("exclusive")
                ->Threads(threads)
                ->UseRealTime();
        };
        by_threads("by_two", 2)->Arg(10)->Arg(50)->Arg(100);
        by_threads("by_four", 4)->Arg(50);
        by_threads("by_eight", 8)->Arg(100);
    }
}

void add() {
    add_lock<Ours>();
    add_lock<Limit>();
    add_lock<PthreadRwlock>();
    add_lock<StdSharedMutex>();
#ifdef WITH_BOOST
    add_lock<BoostSharedMutex>();
#endif
#ifdef WITH_ABSEIL
    add_lock<AbslMutex>();
#endif
#ifdef WITH_GLIB
    add_lock<GlibRwLock>();
#endif
#ifdef WITH_NSPR
    add_lock<NsprRwLock>();
#endif
}
REGISTER_BENCHMARKS(add);

}  // namespace
