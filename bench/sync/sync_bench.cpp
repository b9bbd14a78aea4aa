// Events, mutexes and interlocked operations.
#include <benchmark/benchmark.h>
#include <sched.h>

#include <atomic>
#include <string>
#include <thread>

#include "contenders.h"

using namespace contenders;

namespace {

// A signal that finds nobody waiting, and a wait that finds it given.
template <typename EventType>
void set_and_wait(benchmark::State& state) {
    EventType event;
    for (auto _ : state) {
        event.set();
        event.wait();
    }
}

void run_on(int processor) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(static_cast<size_t>(processor), &set);
    sched_setaffinity(0, sizeof set, &set);
}

// One thread wakes another and is woken by it.
template <typename EventType>
void wake_up_and_back(benchmark::State& state) {
    const bool across = state.range(0) == 2;
    cpu_set_t before;
    sched_getaffinity(0, sizeof before, &before);
    if (across && std::thread::hardware_concurrency() < 2) {
        state.SkipWithError("needs two processors");
        return;
    }
    EventType there;
    EventType back;
    std::atomic<bool> done{false};
    run_on(0);
    std::thread partner([&] {
        run_on(across ? 1 : 0);
        for (;;) {
            there.wait();
            if (done) {
                return;
            }
            there.reset();
            back.set();
        }
    });
    for (auto _ : state) {
        there.set();
        back.wait();
        back.reset();
    }
    done = true;
    there.set();
    partner.join();
    sched_setaffinity(0, sizeof before, &before);
}

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

// What the contract makes of a mutex: an outer lock with a flag and a condition round the inner one.
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

int32_t word = 0;

struct OurWord {
    static constexpr const char* name = "ours";
    static int32_t increment() { return oruInterlockedIncrement(&word); }
    static int32_t exchange(int32_t value) { return oruInterlockedExchange(&word, value); }
};

pthread_mutex_t word_mutex = PTHREAD_MUTEX_INITIALIZER;

struct PosixWord {
    static constexpr const char* name = "limit";
    static int32_t increment() {
        pthread_mutex_lock(&word_mutex);
        ++word;
        pthread_mutex_unlock(&word_mutex);
        return word;
    }
    static int32_t exchange(int32_t value) {
        pthread_mutex_lock(&word_mutex);
        const int32_t previous = word;
        word = value;
        pthread_mutex_unlock(&word_mutex);
        return previous;
    }
};

struct AtomicWord {
    static constexpr const char* name = "std_atomic";
    static int32_t increment() { return __atomic_add_fetch(&word, 1, __ATOMIC_SEQ_CST); }
    static int32_t exchange(int32_t value) {
        return __atomic_exchange_n(&word, value, __ATOMIC_SEQ_CST);
    }
};

template <typename Word>
void increment(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Word::increment());
    }
}

template <typename Word>
void exchange(benchmark::State& state) {
    int32_t value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Word::exchange(++value));
    }
}

std::string named(const char* workload, const char* contender) {
    return std::string("BM_") + workload + "/" + contender;
}

struct RegisterEvent {
    template <typename EventType>
    void operator()() const {
        benchmark::RegisterBenchmark(named("event_set_wait", EventType::name).c_str(),
                                     set_and_wait<EventType>);
        benchmark::RegisterBenchmark(named("event_wake_up_and_back", EventType::name).c_str(),
                                     wake_up_and_back<EventType>)
            ->ArgName("processors")
            ->Arg(1)
            ->Arg(2)
            ->UseRealTime();
    }
};

struct RegisterMutex {
    template <typename Mutex>
    void operator()() const {
        benchmark::RegisterBenchmark(named("mutex_take_release", Mutex::name).c_str(),
                                     take_and_release<Mutex>);
    }
};

template <typename Word>
void register_word() {
    benchmark::RegisterBenchmark(named("interlocked_increment", Word::name).c_str(),
                                 increment<Word>);
    benchmark::RegisterBenchmark(named("interlocked_exchange", Word::name).c_str(), exchange<Word>);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const RegisterEvent event;
    event.operator()<OurEvent>();
    for_each_monitor<Event>(event);
    const RegisterMutex mutex;
    mutex.operator()<OurMutex>();
    mutex.operator()<PosixSteps>();
    for_each_monitor<Lock>(mutex);
    register_word<OurWord>();
    register_word<PosixWord>();
    register_word<AtomicWord>();
    register_thread_benchmarks();

    // The C library spares a process with one thread the price of its locks: keep a second one.
    Event<Posix> done;
    std::thread parked([&] { done.wait(); });
    benchmark::RunSpecifiedBenchmarks();
    done.set();
    parked.join();
}
