// The contenders, brought to one form: a monitor is a lock with a condition, and a manual-reset event is
// made of a monitor and a flag, as the portability layer's own event is.
#pragma once

#include <pthread.h>

#include <condition_variable>
#include <mutex>

#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

#ifdef WITH_SYNCHRONIZATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#include <absl/synchronization/mutex.h>
#pragma GCC diagnostic pop
#endif
#ifdef WITH_THREAD
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

#ifdef WITH_SYNCHRONIZATION
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

#ifdef WITH_THREAD
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

// An event that broadcasts while it holds the lock.
template <typename Monitor>
class Event {
public:
    static constexpr const char* name = Monitor::name;
    void set() {
        monitor_.lock();
        flag_ = true;
        monitor_.wake_all();
        monitor_.unlock();
    }
    void reset() {
        monitor_.lock();
        flag_ = false;
        monitor_.unlock();
    }
    void wait() {
        monitor_.lock();
        while (!flag_) {
            monitor_.wait();
        }
        monitor_.unlock();
    }

private:
    Monitor monitor_;
    bool flag_ = false;
};

class OurEvent {
public:
    static constexpr const char* name = "ours";
    OurEvent() : handle_(oruCreateEvent(nullptr, 1, 0, nullptr)) {}
    ~OurEvent() { oruCloseHandle(handle_); }
    void set() { oruSetEvent(handle_); }
    void reset() { oruResetEvent(handle_); }
    void wait() { oruWaitForSingleObject(handle_, ORU_INFINITE); }

private:
    oruHandle handle_;
};

// Calls register_one<Contender>() for each monitor that is there.
template <template <typename> class Form, typename Register>
void for_each_monitor(Register register_one) {
    register_one.template operator()<Form<Posix>>();
    register_one.template operator()<Form<Standard>>();
#ifdef WITH_GLIB
    register_one.template operator()<Form<Glib>>();
#endif
#ifdef WITH_SYNCHRONIZATION
    register_one.template operator()<Form<Abseil>>();
#endif
#ifdef WITH_THREAD
    register_one.template operator()<Form<Boost>>();
#endif
}

void register_thread_benchmarks();

}  // namespace contenders
