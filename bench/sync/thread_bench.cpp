// Threads, from the start of one to the moment when its starter knows that it has ended.
#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>
#include <utility>

#include "events.h"
#include "support/registering.h"
#include "vlrcomn/thread.h"

#ifdef WITH_WINPR
#include <winpr/thread.h>
#endif

namespace {

using namespace contenders;

void start_ours(benchmark::State& state) {
    for (auto _ : state) {
        const oruHandle thread = oruCreateThread(
            nullptr, 0, [](void*) { return 0u; }, nullptr, 0, nullptr);
        oruWaitForSingleObject(thread, ORU_INFINITE);
        oruCloseHandle(thread);
    }
}

void start_posix(benchmark::State& state) {
    for (auto _ : state) {
        pthread_t thread;
        pthread_create(
            &thread, nullptr, [](void* parameter) { return parameter; }, nullptr);
        pthread_join(thread, nullptr);
    }
}

// The steps of a thread of ours: a detached thread that broadcasts its end.
void start_same_steps(benchmark::State& state) {
    pthread_attr_t detached;
    pthread_attr_init(&detached);
    pthread_attr_setdetachstate(&detached, PTHREAD_CREATE_DETACHED);
    for (auto _ : state) {
        auto* ended = new std::pair<Event<Posix>, std::atomic<int>>();
        const auto end = [](void* parameter) {
            auto* event = static_cast<decltype(ended)>(parameter);
            event->first.set();
            if (++event->second == 2) {
                delete event;
            }
            return parameter;
        };
        pthread_t thread;
        pthread_create(&thread, &detached, end, ended);
        ended->first.wait();
        if (++ended->second == 2) {
            delete ended;
        }
    }
    pthread_attr_destroy(&detached);
}

template <typename Thread>
void start(benchmark::State& state) {
    for (auto _ : state) {
        Thread([] {}).join();
    }
}

#ifdef WITH_GLIB
void start_glib(benchmark::State& state) {
    for (auto _ : state) {
        g_thread_join(g_thread_new(
            nullptr, [](gpointer parameter) { return parameter; }, nullptr));
    }
}
#endif

#ifdef WITH_WINPR
void start_winpr(benchmark::State& state) {
    const auto end = [](LPVOID) -> DWORD { return 0; };
    for (auto _ : state) {
        const HANDLE thread = CreateThread(nullptr, 0, end, nullptr, 0, nullptr);
        WaitForSingleObject(thread, 0xFFFFFFFFU);
        CloseHandle(thread);
    }
}
#endif

void add_start(const char* contender, void (*run)(benchmark::State&)) {
    add_contender("thread_start_to_end", contender, run)->UseRealTime();
}

void add() {
    add_start("ours", start_ours);
    add_start("limit", start_posix);
    add_start("limit_same_steps", start_same_steps);
    add_start("std", start<std::thread>);
#ifdef WITH_GLIB
    add_start("glib", start_glib);
#endif
#ifdef WITH_BOOST
    add_start("boost", start<boost::thread>);
#endif
#ifdef WITH_WINPR
    add_start("winpr", start_winpr);
#endif
}
REGISTER_BENCHMARKS(add);

}  // namespace
