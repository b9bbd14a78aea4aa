// Monitors, each a lock with a condition, brought to one form.
#pragma once

#include <pthread.h>

#include <condition_variable>
#include <mutex>

#ifdef WITH_ABSEIL
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#include <absl/synchronization/mutex.h>
#pragma GCC diagnostic pop
#endif
#ifdef WITH_BOOST
#include <boost/thread.hpp>
#endif
#ifdef WITH_GLIB
#include <glib.h>
#endif

namespace contenders {

struct Posix {
    static constexpr const char* name = "limit";
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t cond = PTHREAD_COND_INITIALIZER;
    void lock() { pthread_mutex_lock(&mutex); }
    void unlock() { pthread_mutex_unlock(&mutex); }
    void wait() { pthread_cond_wait(&cond, &mutex); }
    void wake_all() { pthread_cond_broadcast(&cond); }
};

struct Standard {
    static constexpr const char* name = "std";
    std::mutex mutex;
    std::condition_variable cond;
    void lock() { mutex.lock(); }
    void unlock() { mutex.unlock(); }
    void wait() {
        std::unique_lock held(mutex, std::adopt_lock);
        cond.wait(held);
        held.release();
    }
    void wake_all() { cond.notify_all(); }
};

#ifdef WITH_GLIB
struct Glib {
    static constexpr const char* name = "glib";
    GMutex mutex{};
    GCond cond{};
    void lock() { g_mutex_lock(&mutex); }
    void unlock() { g_mutex_unlock(&mutex); }
    void wait() { g_cond_wait(&cond, &mutex); }
    void wake_all() { g_cond_broadcast(&cond); }
};
#endif

#ifdef WITH_ABSEIL
struct Abseil {
    static constexpr const char* name = "abseil";
    absl::Mutex mutex;
    absl::CondVar cond;
    void lock() { mutex.Lock(); }
    void unlock() { mutex.Unlock(); }
    void wait() { cond.Wait(&mutex); }
    void wake_all() { cond.SignalAll(); }
};
#endif

#ifdef WITH_BOOST
struct Boost {
    static constexpr const char* name = "boost";
    boost::mutex mutex;
    boost::condition_variable cond;
    void lock() { mutex.lock(); }
    void unlock() { mutex.unlock(); }
    void wait() {
        boost::unique_lock<boost::mutex> held(mutex, boost::adopt_lock);
        cond.wait(held);
        held.release();
    }
    void wake_all() { cond.notify_all(); }
};
#endif

// Calls register_one<Form<Monitor>>() for each monitor that is there.
template <template <typename> class Form, typename Register>
void for_each_monitor(Register register_one) {
    register_one.template operator()<Form<Posix>>();
    register_one.template operator()<Form<Standard>>();
#ifdef WITH_GLIB
    register_one.template operator()<Form<Glib>>();
#endif
#ifdef WITH_ABSEIL
    register_one.template operator()<Form<Abseil>>();
#endif
#ifdef WITH_BOOST
    register_one.template operator()<Form<Boost>>();
#endif
}

}  // namespace contenders
