// A thread's own value behind an index that is found at run time.
#include <benchmark/benchmark.h>

#include "monitors.h"
#include "support/registering.h"
#include "vlrcomn/thread.h"

namespace {

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

#ifdef WITH_BOOST
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
void add_local() {
    add_contender("tls_get", Local::name, get<Local>);
    add_contender("tls_set", Local::name, set<Local>);
}

void add() {
    add_local<OurLocal>();
    add_local<PosixLocal>();
#ifdef WITH_GLIB
    add_local<GlibLocal>();
#endif
#ifdef WITH_BOOST
    add_local<BoostLocal>();
#endif
}
REGISTER_BENCHMARKS(add);

}  // namespace
