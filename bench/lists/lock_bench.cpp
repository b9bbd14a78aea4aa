// Shared/exclusive locks: taking and giving back alone, and two threads with one lock or one each.
#include <benchmark/benchmark.h>
#include <pthread.h>

#include <shared_mutex>
#include <string>

#include "registry.h"
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
    [[maybe_unused]] const typename Contender::Thread thread;
    static Contender lock;
    static int words[8];
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
void add_lock() {
    const auto named = [](const std::string& workload, auto run) {
        return add_contender("lock_" + workload, Contender::name, run);
    };
    named("exclusive_pair", exclusive_pair<Contender>);
    named("shared_pair", shared_pair<Contender>);
    // Two threads that share nothing but the process-wide mutex of the exchanges.
    named("each_its_own", exclusive_pair<Contender>)->Threads(2)->UseRealTime();
    if (Contender::name != Limit::name) {
        named("90_percent_shared", mostly_shared<Contender>)->Threads(2)->UseRealTime();
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
