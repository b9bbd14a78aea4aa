// Events: signalled and waited for by one thread, and between two.
#include <benchmark/benchmark.h>
#include <sched.h>

#include <atomic>
#include <thread>

#include "events.h"
#include "support/registering.h"

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

struct Register {
    template <typename EventType>
    void operator()() const {
        add_contender("event_set_wait", EventType::name, set_and_wait<EventType>);
        add_contender("event_wake_up_and_back", EventType::name, wake_up_and_back<EventType>)
            ->ArgName("processors")
            ->Arg(1)
            ->Arg(2)
            ->UseRealTime();
    }
};

void add() {
    for_each_event(Register());
}
REGISTER_BENCHMARKS(add);

}  // namespace
