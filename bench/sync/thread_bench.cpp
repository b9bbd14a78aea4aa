// Threads and thread-local storage.
#include <benchmark/benchmark.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>

#include "contenders.h"

namespace contenders {
namespace {

// From the start of a thread to the moment when its starter knows that it has ended.

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

// As the contract has it: a detached thread that broadcasts its end.
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

// A thread's own value behind an index that is found at run time.

struct OurLocal {
    static constexpr const char* name = "ours";
    uint32_t index = oruTlsAlloc();
    ~OurLocal() { oruTlsFree(index); }
    void* get() { return oruTlsGetValue(index); }
    void set(void* value) { oruTlsSetValue(index, value); }
};

struct PosixLocal {
    static constexpr const char* name = "limit";
    pthread_key_t key{};
    PosixLocal() { pthread_key_create(&key, nullptr); }
    ~PosixLocal() { pthread_key_delete(key); }
    void* get() { return pthread_getspecific(key); }
    void set(void* value) { pthread_setspecific(key, value); }
};

#ifdef WITH_GLIB
struct GlibLocal {
    static constexpr const char* name = "glib";
    static GPrivate key;
    void* get() { return g_private_get(&key); }
    void set(void* value) { g_private_set(&key, value); }
};
GPrivate GlibLocal::key = G_PRIVATE_INIT(nullptr);
#endif

#ifdef WITH_THREAD
struct BoostLocal {
    static constexpr const char* name = "boost";
    boost::thread_specific_ptr<char> pointer{[](char*) {}};
    void* get() { return pointer.get(); }
    void set(void* value) { pointer.reset(static_cast<char*>(value)); }
};
#endif

template <typename Local>
void get(benchmark::State& state) {
    Local local;
    local.set(&state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(local);
        benchmark::DoNotOptimize(local.get());
    }
    local.set(nullptr);
}

template <typename Local>
void set(benchmark::State& state) {
    Local local;
    for (auto _ : state) {
        benchmark::DoNotOptimize(local);
        local.set(&state);
    }
    local.set(nullptr);
}

template <typename Local>
void register_local() {
    benchmark::RegisterBenchmark((std::string("BM_tls_get/") + Local::name).c_str(), get<Local>);
    benchmark::RegisterBenchmark((std::string("BM_tls_set/") + Local::name).c_str(), set<Local>);
}

void register_start(const char* contender, void (*run)(benchmark::State&)) {
    const std::string name = std::string("BM_thread_start_to_end/") + contender;
    benchmark::RegisterBenchmark(name.c_str(), run)->UseRealTime();
}

}  // namespace

void register_thread_benchmarks() {
    register_start("ours", start_ours);
    register_start("limit", start_posix);
    register_start("limit_same_steps", start_same_steps);
    register_start("std", start<std::thread>);
    register_local<OurLocal>();
    register_local<PosixLocal>();
#ifdef WITH_GLIB
    register_start("glib", start_glib);
    register_local<GlibLocal>();
#endif
#ifdef WITH_THREAD
    register_start("boost", start<boost::thread>);
    register_local<BoostLocal>();
#endif
}

}  // namespace contenders
