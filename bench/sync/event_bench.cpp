// Events: signalled, looked at and waited for by one thread, and between two.
#include <benchmark/benchmark.h>
#include <sched.h>
#include <time.h>

#include <atomic>
#include <thread>

#include "events.h"
#include "support/own_lines.h"
#include "support/registering.h"
#include "vlrcomn/thread.h"

namespace {

using namespace contenders;

// A signal that finds nobody waiting, and a wait that finds it given.
template <typename EventType>
void set_and_wait(benchmark::State& state) {
    EventType event;
    for (auto _ : state) {
        event.set();
        event.wait();
    }
}

template <typename EventType>
void look(benchmark::State& state) {
    EventType event;
    if (state.range(0) == 0) {
        event.set();
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(event.is_set());
    }
}

// The layer's other objects, which are looked at in the same way.
void look_at(benchmark::State& state, oruHandle object) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(oruWaitForSingleObject(object, 0));
    }
}

void look_at_running_thread(benchmark::State& state) {
    const oruHandle end = oruCreateEvent(nullptr, 1, 0, nullptr);
    const auto run = [](void* event) {
        return oruWaitForSingleObject(static_cast<oruHandle>(event), ORU_INFINITE);
    };
    const oruHandle thread = oruCreateThread(nullptr, 0, run, end, 0, nullptr);
    look_at(state, thread);
    oruSetEvent(end);
    oruWaitForSingleObject(thread, ORU_INFINITE);
    oruCloseHandle(thread);
    oruCloseHandle(end);
}

void look_at_owned_mutex(benchmark::State& state) {
    const oruHandle mutex = oruCreateMutex(nullptr, 1, nullptr);
    look_at(state, mutex);
    oruReleaseMutex(mutex);
    oruCloseHandle(mutex);
}

void run_on(int processor) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(static_cast<size_t>(processor), &set);
    sched_setaffinity(0, sizeof set, &set);
}

double seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// This thread on one processor and another one, which answers each signal, on the same or on the next.
template <typename EventType>
class Partner {
public:
    // The partner answers after so many seconds of work.
    explicit Partner(int processors, double work = 0) : thread_([=] { answer(processors, work); }) {
        sched_getaffinity(0, sizeof before_, &before_);
        run_on(0);
    }
    ~Partner() {
        done_ = true;
        there_.set();
        thread_.join();
        sched_setaffinity(0, sizeof before_, &before_);
    }
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;

    void signal() { there_.set(); }
    void wait() {
        back_.wait();
        back_.reset();
    }
    // When the partner answered the latest signal.
    double answered() const { return answered_; }

private:
    void answer(int processors, double work) {
        run_on(processors - 1);
        for (;;) {
            there_.wait();
            if (done_) {
                return;
            }
            there_.reset();
            if (work > 0) {
                const double end = seconds(CLOCK_MONOTONIC) + work;
                while ((answered_ = seconds(CLOCK_MONOTONIC)) < end) {
                }
            }
            back_.set();
        }
    }

    OwnLines<EventType> there_;
    OwnLines<EventType> back_;
    std::atomic<bool> done_{false};
    double answered_ = 0;
    cpu_set_t before_;
    std::thread thread_;
};

bool can_run(benchmark::State& state, int processors) {
    if (std::thread::hardware_concurrency() < static_cast<unsigned>(processors)) {
        state.SkipWithError("needs two processors");
        return false;
    }
    return true;
}

// One thread wakes another and is woken by it.
template <typename EventType>
void wake_up_and_back(benchmark::State& state) {
    const auto processors = static_cast<int>(state.range(0));
    if (can_run(state, processors)) {
        Partner<EventType> partner(processors);
        for (auto _ : state) {
            partner.signal();
            partner.wait();
        }
    }
}

// A wait so long that the thread does sleep; what is measured is one end of it.
constexpr double long_work = 100e-6;

// From the signal to the waiter's return.
template <typename EventType>
void wake_sleeper(benchmark::State& state) {
    if (can_run(state, 2)) {
        Partner<EventType> partner(2, long_work);
        for (auto _ : state) {
            partner.signal();
            partner.wait();
            state.SetIterationTime(seconds(CLOCK_MONOTONIC) - partner.answered());
        }
    }
}

// What the waiter takes of its processor, for a look, falling asleep and waking up.
template <typename EventType>
void sleeper_processor_time(benchmark::State& state) {
    if (can_run(state, 2)) {
        Partner<EventType> partner(2, long_work);
        for (auto _ : state) {
            partner.signal();
            const double before = seconds(CLOCK_THREAD_CPUTIME_ID);
            partner.wait();
            state.SetIterationTime(seconds(CLOCK_THREAD_CPUTIME_ID) - before);
        }
    }
}

struct Register {
    template <typename EventType>
    void operator()() const {
        add_contender("event_set_wait", EventType::name, set_and_wait<EventType>);
        add_contender("event_wake_up_and_back", EventType::name, wake_up_and_back<EventType>)
            ->ArgName("processors")
            ->Arg(1)
            ->Arg(2)
            ->UseRealTime();
        const auto add_sleeper = [](const char* workload, auto run) {
            add_contender(workload, EventType::name, run)->UseManualTime();
        };
        add_sleeper("event_wake_sleeper", wake_sleeper<EventType>);
        add_sleeper("event_sleeper_processor_time", sleeper_processor_time<EventType>);
        add_contender("look", EventType::name, look<EventType>)->ArgName("at")->Arg(0)->Arg(1);
    }
};

void add() {
    for_each_event(Register());
    add_contender("look", "ours/at:2", look_at_running_thread);
    add_contender("look", "ours/at:3", look_at_owned_mutex);
}
REGISTER_BENCHMARKS(add);

}  // namespace
