// Mutexes, taken and released by one thread.
#include <benchmark/benchmark.h>

#include "monitors.h"
#include "support/registering.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

namespace {

using namespace contenders;

template <typename Monitor>
struct Lock : Monitor {
    void take() { this->lock(); }
    void release() { this->unlock(); }
};

class OurMutex {
public:
    static constexpr const char* name = "ours";
    OurMutex() : handle_(oruCreateMutex(nullptr, 0, nullptr)) {}
    ~OurMutex() { oruCloseHandle(handle_); }
    void take() { oruWaitForSingleObject(handle_, ORU_INFINITE); }
    void release() { oruReleaseMutex(handle_); }

private:
    oruHandle handle_;
};

// The steps of a mutex of ours: an outer lock with a flag and a condition round the inner one.
class PosixSteps {
public:
    static constexpr const char* name = "limit_same_steps";
    void take() {
        outer_.lock();
        pthread_mutex_trylock(&inner_);
        free_ = false;
        outer_.unlock();
    }
    void release() {
        outer_.lock();
        pthread_mutex_unlock(&inner_);
        free_ = true;
        outer_.wake_all();
        outer_.unlock();
    }

private:
    Posix outer_;
    pthread_mutex_t inner_ = PTHREAD_MUTEX_INITIALIZER;
    bool free_ = true;
};

template <typename Mutex>
void take_and_release(benchmark::State& state) {
    Mutex mutex;
    for (auto _ : state) {
        mutex.take();
        mutex.release();
    }
}

struct Register {
    template <typename Mutex>
    void operator()() const {
        add_contender("mutex_take_release", Mutex::name, take_and_release<Mutex>);
    }
};

void add() {
    const Register register_one;
    register_one.operator()<OurMutex>();
    register_one.operator()<PosixSteps>();
    for_each_monitor<Lock>(register_one);
}
REGISTER_BENCHMARKS(add);

}  // namespace
